#include "run/RunReason.h"

#include <corvane/platform/Unknown.h>
#include <corvane/scriptrules/IScriptProcessor.h>
#include <corvane/scriptrules/ScriptStatus.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"

namespace {

using corvane::ScriptRun;
using corvane::ScriptRunStatus;

CStringW hostReason(HResult code) {
    CStringW text = u"the script host ";
    text += IScriptProcessor::kProgramId;
    switch (code) {
        case corvane::kErrorNoSuchProgramId:
        case corvane::kErrorClassNotRegistered:
            text += u" is not registered";
            break;
        case corvane::kErrorModuleNotFound:
            text += u": its module cannot be loaded";
            break;
        case corvane::kErrorNoInterface:
            text += u" is no script host";
            break;
        default:
            text += u" cannot be created";
    }
    return text + u" (" + statusText(code) + u")";
}

const char16_t* engineReason(HResult code) {
    switch (code) {
        case corvane::kEngineNameBad:
            return u"its name is no Lua name";
        case corvane::kEngineMissing:
            return u"there is no module of its name beside it";
        case corvane::kEngineBroken:
            return u"the module beside it cannot be read or loaded";
        case corvane::kEngineWithoutEntry:
            return u"the module beside it has no function luaopen_NAME";
        case corvane::kEngineFailed:
            return u"it raised an error, ran into a limit or gave no table";
        case corvane::kEngineNameTaken:
            return u"its name is taken";
        default:
            return u"it failed";
    }
}

/// Why there is no definition with a script: a damaged index says less than it should.
CStringW missingScriptReason(const ScriptRun& run) {
    const CStringW index = run.scriptFolder + u"\\UserDefinedFile.xml";
    QorXMLDocument document;
    document.LoadFromFile(index);
    const corvane::XMLFault fault = corvane::LastXMLFault(document);
    CStringW text = u"the rule names no script file, in the rule file or in the index ";
    text += shownPath(index);
    if (fault.line > 0) text.AppendFormat(u":%d:%d", fault.line, fault.column);
    if (!fault.message.IsEmpty()) text += u": " + fault.message;
    return text;
}

/// "wall.lua:3:7" as far as the host knows it.
CStringW placeIn(const CStringW& file, const ScriptRun& run) {
    CStringW place = lastName(file);
    if (run.line >= 0) place.AppendFormat(u":%d", run.line + 1);
    if (run.line >= 0 && run.column >= 0) place.AppendFormat(u":%d", run.column + 1);
    return place;
}

CStringW scriptReason(const ScriptRun& run) {
    const CStringW& said = run.errorMessage.IsEmpty() ? run.errorType : run.errorMessage;
    CStringW text = placeIn(run.scriptPath, run) + u": ";
    text += said.IsEmpty() ? CStringW(u"the script failed without a reason") : said;
    return text;
}

CStringW reasonOf(const ScriptRun& run) {
    CStringW text;
    if (run.scriptUnreadable && run.status != ScriptRunStatus::ScriptTooLarge) {
        text.Format(u"the script %s cannot be read", shownPath(run.scriptPath));
        return text;
    }
    switch (run.status) {
        case ScriptRunStatus::Succeeded:
        case ScriptRunStatus::NotConfigured:
            break;
        case ScriptRunStatus::HostUnavailable:
            return hostReason(run.code);
        case ScriptRunStatus::EngineRefused:
            text.Format(u"the script host refused the engine %s: %s (%s)", shownPath(run.engine),
                        engineReason(run.code), statusText(run.code));
            if (!run.errorMessage.IsEmpty())
                text += u"\n" + placeIn(run.errorSource, run) + u": " + run.errorMessage;
            break;
        case ScriptRunStatus::NoScriptName:
            return missingScriptReason(run);
        case ScriptRunStatus::ScriptMissing:
            text.Format(u"there is no script %s", shownPath(run.scriptPath));
            break;
        case ScriptRunStatus::HostFailed:
            text.Format(u"the script host failed in %s (%s)", run.operation, statusText(run.code));
            break;
        case ScriptRunStatus::ScriptFailed:
            return scriptReason(run);
        case ScriptRunStatus::ScriptTooLarge:
            text.Format(u"the script %s holds more than 256 MiB", shownPath(run.scriptPath));
            break;
    }
    return text;
}

}  // namespace

bool saysNotMet(const ScriptRun& run) {
    return run.status == ScriptRunStatus::ScriptFailed &&
           corvane::SaysNotMet(run.errorNumber, run.errorCode);
}

std::vector<CStringW> reasonsOf(const ScriptRun& run) {
    return linesOf(reasonOf(run));
}
