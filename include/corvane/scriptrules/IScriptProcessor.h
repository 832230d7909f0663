#pragma once

#include <cstdint>

#include <corvane/platform/Unknown.h>

/// The script host: a component registered under "QorScriptHost.ScriptProcessor" that runs one
/// script.
///
/// Order of the calls: AddEngineFile for each engine, SetScriptText once, PrepareScript, RunScript
/// when that reported success, EndScript when the run did. Each operation answers with a status; a
/// negative one is a failure. All run on one thread. The slots and their order are fixed.
class IScriptProcessor : public IDispatch {
public:
    /// {7DD4BB45-C163-47A2-A5CF-50D0371AF680}
    static constexpr Guid kInterfaceId{
        0x7DD4BB45, 0xC163, 0x47A2, {0xA5, 0xCF, 0x50, 0xD0, 0x37, 0x1A, 0xF6, 0x80}};
    /// The identifier under which the host is registered.
    static constexpr const char16_t* kProgramId = u"QorScriptHost.ScriptProcessor";

    /// Runs the prepared script. Stores 1 in `*success` when it succeeded and any other value when
    /// it did not.
    virtual HResult RunScript(std::int16_t* success) = 0;
    /// Ends a successful run.
    virtual HResult EndScript() = 0;
    /// Takes a copy of the whole script, zero-terminated.
    virtual HResult SetScriptText(const char16_t* text) = 0;
    /// Takes the path of an engine's type library file, zero-terminated.
    virtual HResult AddEngineFile(const char16_t* path) = 0;
    /// Compiles the script. Stores 1 in `*success` when it can run and any other value when it
    /// can't.
    virtual HResult PrepareScript(std::int16_t* success) = 0;
    /// Says what failed. Lines and characters count from 0. The caller frees the three texts with
    /// SysFreeString.
    virtual HResult GetScriptError(std::int32_t* lineNumber, std::int32_t* charNumber,
                                   BSTR* message, BSTR* type, BSTR* source,
                                   std::int32_t* errorNumber, std::int32_t* errorCode) = 0;

protected:
    ~IScriptProcessor() = default;
};
