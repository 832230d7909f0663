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
        return corvane::kErrorOutOfMemory;
    } catch (...) {
        return corvane::kErrorFail;
    }
}

BSTR systemText(const std::string& utf8) {
    return corvane::systemText(CStringW::FromUtf8(utf8).GetString());
}

}  // namespace

ScriptProcessor* ScriptProcessor::create() {
    auto* processor = new ScriptProcessor;
    const HResult status = guarded([&] {
        processor->script_ = Script::create();
        return processor->script_ ? corvane::kOk : corvane::kErrorOutOfMemory;
    });
    if (status == corvane::kOk) return processor;
    processor->Release();
    return nullptr;
}

HResult ScriptProcessor::QueryInterface(const Guid& interfaceId, void** object) {
    if (!object) return corvane::kErrorPointer;
    *object = nullptr;
    if (interfaceId != corvane::interfaceId<IUnknown> &&
        interfaceId != corvane::interfaceId<IDispatch> &&
        interfaceId != IScriptProcessor::kInterfaceId)
        return corvane::kErrorNoInterface;
    AddRef();
    *object = static_cast<IScriptProcessor*>(this);
    return corvane::kOk;
}

QorULong ScriptProcessor::AddRef() {
    return ++references_;
}

QorULong ScriptProcessor::Release() {
    const QorULong left = --references_;
    if (left == 0) delete this;
    return left;
}

HResult ScriptProcessor::GetTypeInfoCount(unsigned* count) {
    if (!count) return corvane::kErrorPointer;
    *count = 0;
    return corvane::kOk;
}

HResult ScriptProcessor::GetTypeInfo(unsigned, QorULong, ITypeInfo** typeInfo) {
    if (typeInfo) *typeInfo = nullptr;
    return corvane::kErrorNotImplemented;
}

HResult ScriptProcessor::GetIDsOfNames(const Guid&, OLECHAR**, unsigned, QorULong, QorLong*) {
    return corvane::kErrorNotImplemented;
}

HResult ScriptProcessor::Invoke(QorLong, const Guid&, QorULong, std::uint16_t, DISPPARAMS*,
                                VARIANT*, EXCEPINFO*, unsigned*) {
    return corvane::kErrorNotImplemented;
}

HResult ScriptProcessor::AddEngineFile(const char16_t* path) {
    if (!path) return corvane::kErrorPointer;
    if (step_ > Step::HasText) return corvane::kErrorUnexpected;
    return guarded([&] { return script_->addEngine(path); });
}

HResult ScriptProcessor::SetScriptText(const char16_t* text) {
    if (!text) return corvane::kErrorPointer;
    if (step_ != Step::Collecting) return corvane::kErrorUnexpected;
    return guarded([&] {
        const std::uint64_t most = script_->longestText();
        std::uint64_t size = 0;
        while (size <= most && text[size] != 0)
            ++size;
        isTooLong_ = size > most;
        if (!isTooLong_) text_ = CStringW(text).ToUtf8();
        step_ = Step::HasText;
        return corvane::kOk;
    });
}

HResult ScriptProcessor::finish(bool done, Step next, std::int16_t* success) {
    step_ = done ? next : Step::Failed;
    *success = done ? 1 : 0;
    return corvane::kOk;
}

HResult ScriptProcessor::PrepareScript(std::int16_t* success) {
    if (!success) return corvane::kErrorPointer;
    *success = 0;
    if (step_ != Step::HasText) return corvane::kErrorUnexpected;
    return guarded([&] {
        if (isTooLong_) script_->refuseText();
        const bool done = !isTooLong_ && script_->compile(std::move(text_));
        return finish(done, Step::Prepared, success);
    });
}

HResult ScriptProcessor::RunScript(std::int16_t* success) {
    if (!success) return corvane::kErrorPointer;
    *success = 0;
    if (step_ != Step::Prepared) return corvane::kErrorUnexpected;
    // A run that stops half way can't be run again.
    step_ = Step::Failed;
    return guarded([&] { return finish(script_->run(), Step::Succeeded, success); });
}

HResult ScriptProcessor::EndScript() {
    if (step_ != Step::Succeeded) return corvane::kErrorUnexpected;
    step_ = Step::Ended;
    script_.reset();
    return corvane::kOk;
}

HResult ScriptProcessor::GetScriptError(std::int32_t* lineNumber, std::int32_t* charNumber,
                                        BSTR* message, BSTR* type, BSTR* source,
                                        std::int32_t* errorNumber, std::int32_t* errorCode) {
    if (!lineNumber || !charNumber || !message || !type || !source || !errorNumber || !errorCode)
        return corvane::kErrorPointer;
    *lineNumber = *charNumber = *errorNumber = *errorCode = -1;
    *message = *type = *source = nullptr;
    if (!script_ || !script_->fault()) return corvane::kErrorUnexpected;
    return guarded([&] {
        const ScriptFault& fault = *script_->fault();
        *lineNumber = fault.line;
        *charNumber = fault.character;
        *errorNumber = static_cast<std::int32_t>(fault.kind);
        *errorCode = corvane::ScriptErrorCode(fault.kind);
        *type = corvane::systemText(typeText(fault.kind));
        *message = systemText(fault.message);
        *source = systemText(fault.source);
        return corvane::kOk;
    });
}

}  // namespace scripthost
