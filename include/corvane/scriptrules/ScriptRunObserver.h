#pragma once

#include <functional>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/platform/Unknown.h>
#include <corvane/scriptrules/ScriptStatus.h>
#include <corvane/text/CStringW.h>

class CQorRule;

namespace corvane {

/// How a run of a script rule ended. Only Succeeded and NotConfigured give the result 0.
enum class ScriptRunStatus {
    Succeeded,
    NotConfigured,    ///< No script folder is configured: the script did not run.
    HostUnavailable,  ///< The script host can't be created; `code` says why.
    EngineRefused,    ///< The host refused an engine; `engine` and `code` say which and why.
    NoScriptName,     ///< The rule names no script file.
    ScriptMissing,    ///< The script file is not there.
    HostFailed,  ///< Another call to the host failed; `operation` and `code` say which and why.
    /// The script does not compile, ended in an error or says that the part does not meet the rule;
    /// see the error fields and SaysNotMet.
    ScriptFailed,
    ScriptTooLarge,  ///< The script file holds more than 256 MiB; it did not run.
};

/// One finished run of a script rule.
struct ScriptRun {
    const CQorRule* rule = nullptr;                       ///< Valid for the length of the call.
    ScriptRunStatus status = ScriptRunStatus::Succeeded;  ///< How it ended.
    CStringW scriptFolder;  ///< Empty when the run ended before it was known.
    CStringW scriptPath;    ///< Empty when the run ended before it was known.
    /// The script file is there but could not be read. Unless it was too large, the host ran an
    /// empty script in its place.
    bool scriptUnreadable = false;
    CStringW engine;     ///< Path of the engine that was refused.
    CStringW operation;  ///< Name of the host's operation that failed.
    HResult code = kOk;  ///< Status of what failed.

    // What the host says of the error; with ScriptFailed, and with EngineRefused when `code` is
    // kEngineFailed: the engine's own code failed.
    QorLong line = -1;         ///< From 0; -1 when the host does not say.
    QorLong column = -1;       ///< From 0; -1 when the host does not say.
    CStringW errorType;        ///< Kind of error, as the host names it.
    CStringW errorSource;      ///< The line of the script, or where else it failed.
    CStringW errorMessage;     ///< What is wrong.
    QorLong errorNumber = -1;  ///< See ScriptStatus.h.
    QorLong errorCode = -1;    ///< See ScriptStatus.h.

    /// True when the script judged and the part does not meet the rule; false when it passed or
    /// could not judge.
    bool SaysNotMet() const {
        return status == ScriptRunStatus::ScriptFailed &&
               corvane::SaysNotMet(errorNumber, errorCode);
    }
};

/// Looks at each run of a script when it is over.
using ScriptRunObserver = std::function<void(const ScriptRun&)>;

/// Replaces what is told of every finished run, in batch mode too, and hands out the former
/// observer; an empty one means none. It runs on the thread of the run, after the host is
/// released and before Execute returns. Set it before threads start.
CORVANE_EXPORT ScriptRunObserver SetScriptRunObserver(ScriptRunObserver observer);

}  // namespace corvane
