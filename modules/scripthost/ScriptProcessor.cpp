#include "ScriptProcessor.h"

#include <new>

#include <corvane/text/CStringW.h>

namespace scripthost {
namespace {

/// No exception leaves a component.
template <typename Work>
HResult guarded(Work work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return kErrorOutOfMemory;
    } catch (...) {
        return kErrorFail;
    }
}

BSTR systemText(const std::string& utf8) {
    return SysAllocString(CStringW::FromUtf8(utf8).GetString());
}

}  // namespace

ScriptProcessor* ScriptProcessor::create() {
    auto* processor = new ScriptProcessor;
    const HResult status = guarded([&] {
        processor->script_ = Script::create();
        return processor->script_ ? kOk : kErrorOutOfMemory;
    });
    if (status == kOk) return processor;
    processor->Release();
    return nullptr;
}

HResult ScriptProcessor::QueryInterface(const Guid& interfaceId, void** object) {
    if (!object) return kErrorPointer;
    *object = nullptr;
    if (interfaceId != IUnknown::kInterfaceId && interfaceId != IDispatch::kInterfaceId &&
        interfaceId != IScriptProcessor::kInterfaceId)
        return kErrorNoInterface;
    AddRef();
    *object = static_cast<IScriptProcessor*>(this);
    return kOk;
}

std::uint32_t ScriptProcessor::AddRef() {
    return ++references_;
}

std::uint32_t ScriptProcessor::Release() {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
}

HResult ScriptProcessor::GetTypeInfoCount(std::uint32_t* count) {
    if (!count) return kErrorPointer;
    *count = 0;
    return kOk;
}

HResult ScriptProcessor::GetTypeInfo(std::uint32_t, std::uint32_t, void** typeInfo) {
    if (typeInfo) *typeInfo = nullptr;
    return kErrorNotImplemented;
}

HResult ScriptProcessor::GetIDsOfNames(const Guid&, char16_t**, std::uint32_t, std::uint32_t,
                                       std::int32_t*) {
    return kErrorNotImplemented;
}

HResult ScriptProcessor::Invoke(std::int32_t, const Guid&, std::uint32_t, std::uint16_t, void*,
                                void*, void*, std::uint32_t*) {
    return kErrorNotImplemented;
}

HResult ScriptProcessor::AddEngineFile(const char16_t* path) {
    if (!path) return kErrorPointer;
    if (step_ > Step::HasText) return kErrorUnexpected;
    return guarded([&] { return script_->addEngine(path); });
}

HResult ScriptProcessor::SetScriptText(const char16_t* text) {
    if (!text) return kErrorPointer;
    if (step_ != Step::Collecting) return kErrorUnexpected;
    return guarded([&] {
        text_ = CStringW(text).ToUtf8();
        step_ = Step::HasText;
        return kOk;
    });
}

HResult ScriptProcessor::finish(bool done, Step next, std::int16_t* success) {
    step_ = done ? next : Step::Failed;
    *success = done ? 1 : 0;
    return kOk;
}

HResult ScriptProcessor::PrepareScript(std::int16_t* success) {
    if (!success) return kErrorPointer;
    *success = 0;
    if (step_ != Step::HasText) return kErrorUnexpected;
    return guarded(
        [&] { return finish(script_->compile(std::move(text_)), Step::Prepared, success); });
}

HResult ScriptProcessor::RunScript(std::int16_t* success) {
    if (!success) return kErrorPointer;
    *success = 0;
    if (step_ != Step::Prepared) return kErrorUnexpected;
    // A run that stops half way can't be run again.
    step_ = Step::Failed;
    return guarded([&] { return finish(script_->run(), Step::Succeeded, success); });
}

HResult ScriptProcessor::EndScript() {
    if (step_ != Step::Succeeded) return kErrorUnexpected;
    step_ = Step::Ended;
    script_.reset();
    return kOk;
}

HResult ScriptProcessor::GetScriptError(std::int32_t* lineNumber, std::int32_t* charNumber,
                                        BSTR* message, BSTR* type, BSTR* source,
                                        std::int32_t* errorNumber, std::int32_t* errorCode) {
    if (!lineNumber || !charNumber || !message || !type || !source || !errorNumber || !errorCode)
        return kErrorPointer;
    *lineNumber = *charNumber = *errorNumber = *errorCode = -1;
    *message = *type = *source = nullptr;
    if (!script_ || !script_->fault()) return kErrorUnexpected;
    return guarded([&] {
        const ScriptFault& fault = *script_->fault();
        *lineNumber = fault.line;
        *charNumber = fault.character;
        *errorNumber = static_cast<std::int32_t>(fault.kind);
        *errorCode = corvane::ScriptErrorCode(fault.kind);
        *type = SysAllocString(typeText(fault.kind));
        *message = systemText(fault.message);
        *source = systemText(fault.source);
        return kOk;
    });
}

}  // namespace scripthost
