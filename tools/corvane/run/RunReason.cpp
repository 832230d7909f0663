#include "run/RunReason.h"

#include <corvane/platform/Unknown.h>
#include <corvane/scriptrules/IScriptProcessor.h>
#include <corvane/scriptrules/ScriptStatus.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"
#include "language/Messages.h"

namespace {

using corvane::ScriptRun;
using corvane::ScriptRunStatus;

CStringW hostReason(HResult code) {
    const CStringW host = IScriptProcessor::kProgramId;
    const CStringW status = statusText(code);
    switch (code) {
        case corvane::kErrorNoSuchProgramId:
        case corvane::kErrorClassNotRegistered:
            return tr("the script host {0} is not registered ({1})", host, status);
        case corvane::kErrorModuleNotFound:
            return tr("the script host {0}: its module cannot be loaded ({1})", host, status);
        case corvane::kErrorNoInterface:
            return tr("the script host {0} is no script host ({1})", host, status);
        default:
            return tr("the script host {0} cannot be created ({1})", host, status);
    }
}

CStringW engineReason(HResult code) {
    switch (code) {
        case corvane::kEngineNameBad:
            return tr("its name is no Lua name");
        case corvane::kEngineMissing:
            return tr("there is no module of its name beside it");
        case corvane::kEngineBroken:
            return tr("the module beside it cannot be read or loaded");
        case corvane::kEngineWithoutEntry:
            return tr("the module beside it has no function luaopen_NAME");
        case corvane::kEngineFailed:
            return tr("it raised an error, ran into a limit or gave no table");
        case corvane::kEngineNameTaken:
            return tr("its name is taken");
        default:
            return tr("it failed");
    }
}

/// Why there is no definition with a script: a damaged index says less than it should.
CStringW missingScriptReason(const ScriptRun& run) {
    const CStringW index = run.scriptFolder + u"\\UserDefinedFile.xml";
    QorXMLDocument document;
    document.LoadFromFile(index);
    const corvane::XMLFault fault = corvane::LastXMLFault(document);
    CStringW place = shownPath(index);
    if (fault.line > 0) place.AppendFormat(u":%d:%d", fault.line, fault.column);
    CStringW text =
        tr("the rule names no script file, in the rule file or in the index {0}", place);
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

/// The place comes last: it helps the script's author, and the reason whoever made the part.
CStringW scriptReason(const ScriptRun& run) {
    const CStringW& said = run.errorMessage.IsEmpty() ? run.errorType : run.errorMessage;
    const CStringW text = said.IsEmpty() ? tr("the script failed without a reason") : said;
    return text + u" (" + placeIn(run.scriptPath, run) + u")";
}

CStringW reasonOf(const ScriptRun& run) {
    if (run.scriptUnreadable && run.status != ScriptRunStatus::ScriptTooLarge)
        return tr("the script {0} cannot be read", shownPath(run.scriptPath));
    CStringW text;
    switch (run.status) {
        case ScriptRunStatus::Succeeded:
        case ScriptRunStatus::NotConfigured:
            break;
        case ScriptRunStatus::HostUnavailable:
            return hostReason(run.code);
        case ScriptRunStatus::EngineRefused:
            text = tr("the script host refused the engine {0}: {1} ({2})", shownPath(run.engine),
                      engineReason(run.code), statusText(run.code));
            if (!run.errorMessage.IsEmpty())
                text += u"\n" + placeIn(run.errorSource, run) + u": " + run.errorMessage;
            break;
        case ScriptRunStatus::NoScriptName:
            return missingScriptReason(run);
        case ScriptRunStatus::ScriptMissing:
            text = tr("there is no script {0}", shownPath(run.scriptPath));
            break;
        case ScriptRunStatus::HostFailed:
            text = tr("the script host failed in {0} ({1})", run.operation, statusText(run.code));
            break;
        case ScriptRunStatus::ScriptFailed:
            return scriptReason(run);
        case ScriptRunStatus::ScriptTooLarge:
            text = tr("the script {0} holds more than 256 MiB", shownPath(run.scriptPath));
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
