#include "scriptrules/ScriptSession.h"

#include <utility>

#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/ScriptRunObserver.h>
#include <corvane/scriptrules/ScriptStatus.h>

#include "emulation/Components.h"
#include "emulation/Registry.h"
#include "system/Lasting.h"

namespace corvane {
namespace {

system::Lasting<ScriptRunObserver> currentObserver;

}  // namespace

ScriptRunObserver SetScriptRunObserver(ScriptRunObserver observer) {
    return std::exchange(currentObserver.get(), std::move(observer));
}

namespace scriptrules {

bool isObserved() {
    return static_cast<bool>(currentObserver.get());
}

void notice(const ScriptRun& run) {
    // A copy: the observer may replace itself while it runs.
    if (const ScriptRunObserver observer = currentObserver.get()) observer(run);
}

}  // namespace scriptrules
}  // namespace corvane

namespace corvane::scriptrules {
namespace {

constexpr std::int16_t kSuccess = 1;

// Text that the host allocates and the library frees.
class HostText {
public:
    HostText() = default;
    HostText(const HostText&) = delete;
    HostText& operator=(const HostText&) = delete;
    ~HostText() { SysFreeString(text_); }

    BSTR* receive() { return &text_; }
    // Null where the host gave none.
    const char16_t* get() {
        copy_ = textOf(text_);
        return text_ ? copy_.c_str() : nullptr;
    }

private:
    BSTR text_ = nullptr;
    std::u16string copy_;
};

// Lines count from 0 at the host and from 1 for the user. Whatever a host stores, the sum is
// defined.
std::int32_t shownLine(std::int32_t line) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(line) + 1U);
}

}  // namespace

HResult ScriptSession::findHost() {
    const emulation::RegistryState registry;
    const auto classId = emulation::classFromProgramId(IScriptProcessor::kProgramId);
    if (!classId) return kErrorNoSuchProgramId;
    void* object = nullptr;
    HResult status = emulation::createInstance(*classId, corvane::interfaceId<IUnknown>, &object);
    if (failed(status)) return status;
    ATL::CComPtr<IUnknown> component;
    component.Attach(static_cast<IUnknown*>(object));
    status = component.QueryInterface(host_);
    if (failed(status)) return status;
    return host_ ? kOk : kErrorNoInterface;
}

bool ScriptSession::createHost() {
    const HResult status = findHost();
    if (!failed(status)) return true;
    run_.status = ScriptRunStatus::HostUnavailable;
    run_.code = status;
    return false;
}

bool ScriptSession::refused(HResult status, const char16_t* operation) {
    if (!failed(status)) return false;
    run_.status = ScriptRunStatus::HostFailed;
    run_.operation = operation;
    run_.code = status;
    return true;
}

bool ScriptSession::addEngines(const CStringList& engines) {
    for (const CStringW& engine : engines) {
        if (!refused(host_->AddEngineFile(engine), u"AddEngineFile")) continue;
        // The status alone does not lead anyone to the line of an engine that is a script itself. A
        // run that nobody watches makes no call whose answer is lost.
        if (run_.code == corvane::kEngineFailed && isObserved()) fetchError();
        run_.status = ScriptRunStatus::EngineRefused;
        run_.engine = engine;
        return false;
    }
    return true;
}

bool ScriptSession::runScript(CStringW script) {
    std::int16_t success = 0;
    if (refused(host_->SetScriptText(script), u"SetScriptText")) return false;
    script = CStringW();
    if (refused(host_->PrepareScript(&success), u"PrepareScript")) return false;
    if (success == kSuccess && refused(host_->RunScript(&success), u"RunScript")) return false;
    if (success == kSuccess) return !refused(host_->EndScript(), u"EndScript");
    fetchError();
    return false;
}

void ScriptSession::fetchError() {
    std::int32_t line = -1;
    std::int32_t column = -1;
    std::int32_t number = -1;
    std::int32_t code = -1;
    HostText message;
    HostText type;
    HostText source;
    // A host that cannot say what failed leaves the values as they are, and they are shown.
    host_->GetScriptError(&line, &column, message.receive(), type.receive(), source.receive(),
                          &number, &code);
    report_.Format(
        u"%s\n%s: %s\n%s:%d %s:%d %s:%x", type.get(), ResourceText(resource::kErrorSource),
        source.get(), ResourceText(resource::kErrorLine), shownLine(line),
        ResourceText(resource::kErrorNumber), number, ResourceText(resource::kErrorCode), code);
    run_.status = ScriptRunStatus::ScriptFailed;
    run_.line = line;
    run_.column = column;
    run_.errorType = type.get();
    run_.errorSource = source.get();
    run_.errorMessage = message.get();
    run_.errorNumber = number;
    run_.errorCode = code;
}

}  // namespace corvane::scriptrules
