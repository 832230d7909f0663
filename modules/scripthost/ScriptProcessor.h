#pragma once

#include <atomic>
#include <memory>

#include <corvane/scriptrules/IScriptProcessor.h>

#include "Script.h"

namespace scripthost {

/// The script host: the calls of one run, each in its turn.
class ScriptProcessor final : public IScriptProcessor {
public:
    /// One reference for the caller, or null when memory is short. May throw std::bad_alloc.
    static ScriptProcessor* create();

    HResult QueryInterface(const Guid& interfaceId, void** object) override;
    QorULong AddRef() override;
    QorULong Release() override;

    HResult GetTypeInfoCount(unsigned* count) override;
    HResult GetTypeInfo(unsigned index, QorULong locale, ITypeInfo** typeInfo) override;
    HResult GetIDsOfNames(const Guid& reserved, OLECHAR** names, unsigned count, QorULong locale,
                          QorLong* ids) override;
    HResult Invoke(QorLong id, const Guid& reserved, QorULong locale, std::uint16_t flags,
                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                   unsigned* argumentError) override;

    HResult RunScript(std::int16_t* success) override;
    HResult EndScript() override;
    HResult SetScriptText(const char16_t* text) override;
    HResult AddEngineFile(const char16_t* path) override;
    HResult PrepareScript(std::int16_t* success) override;
    HResult GetScriptError(std::int32_t* lineNumber, std::int32_t* charNumber, BSTR* message,
                           BSTR* type, BSTR* source, std::int32_t* errorNumber,
                           std::int32_t* errorCode) override;

protected:
    ~ScriptProcessor() = default;

private:
    enum class Step { Collecting, HasText, Prepared, Succeeded, Failed, Ended };

    ScriptProcessor() = default;
    HResult finish(bool done, Step next, std::int16_t* success);

    std::atomic<QorULong> references_{1};
    Step step_ = Step::Collecting;
    std::unique_ptr<Script> script_;
    std::string text_;
    bool isTooLong_ = false;  ///< The text is not kept.
};

}  // namespace scripthost
