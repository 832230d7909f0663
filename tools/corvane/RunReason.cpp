#include "RunReason.h"

#include <corvane/platform/Unknown.h>
#include <corvane/scriptrules/IScriptProcessor.h>

#include "Text.h"

namespace {

using corvane::ScriptRun;
using corvane::ScriptRunStatus;

// What the component runtime answers for a program identifier that nobody registered.
constexpr HResult kInvalidClassText = static_cast<HResult>(0x800401F3);

CStringW hostReason(HResult code) {
    CStringW text = u"the script host ";
    text += IScriptProcessor::kProgramId;
    switch (code) {
        case kInvalidClassText:
        case kErrorClassNotRegistered:
            text += u" is not registered";
            break;
        case kErrorModuleNotFound:
            text += u": its module cannot be loaded";
            break;
        case kErrorNoInterface:
            text += u" is no script host";
            break;
        default:
            text += u" cannot be created";
    }
    return text + u" (" + statusText(code) + u")";
}

/// "wall.lua:3:7" as far as the host knows it.
CStringW scriptPlace(const ScriptRun& run) {
    CStringW place = lastName(run.scriptPath);
    if (run.line >= 0) place.AppendFormat(u":%d", run.line + 1);
    if (run.line >= 0 && run.column >= 0) place.AppendFormat(u":%d", run.column + 1);
    return place;
}

CStringW scriptReason(const ScriptRun& run) {
    const CStringW& said = run.errorMessage.IsEmpty() ? run.errorType : run.errorMessage;
    CStringW text = scriptPlace(run) + u": ";
    text += said.IsEmpty() ? CStringW(u"the script failed without a reason") : said;
    return text;
}

CStringW reasonOf(const ScriptRun& run) {
    CStringW text;
    switch (run.status) {
        case ScriptRunStatus::Succeeded:
        case ScriptRunStatus::NotConfigured:
            break;
        case ScriptRunStatus::HostUnavailable:
            return hostReason(run.code);
        case ScriptRunStatus::EngineRefused:
            text.Format(u"the script host refused the engine %s (%s)", shownPath(run.engine),
                        statusText(run.code));
            break;
        case ScriptRunStatus::NoScriptName:
            return u"the rule names no script file";
        case ScriptRunStatus::ScriptMissing:
            text.Format(u"there is no script %s", shownPath(run.scriptPath));
            break;
        case ScriptRunStatus::HostFailed:
            text.Format(u"the script host failed in %s (%s)", run.operation, statusText(run.code));
            break;
        case ScriptRunStatus::ScriptFailed:
            return scriptReason(run);
    }
    return text;
}

}  // namespace

std::vector<CStringW> reasonsOf(const ScriptRun& run) {
    return linesOf(reasonOf(run));
}
