#include <optional>
#include <utility>

#include <corvane/app/BatchMode.h>
#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/ConcreteQORRule.h>

#include "emulation/Components.h"
#include "emulation/MessageBox.h"
#include "scriptrules/RuleIndex.h"
#include "scriptrules/ScriptRunNotice.h"
#include "scriptrules/ScriptSession.h"
#include "scriptrules/ScriptText.h"
#include "system/Files.h"
#include "system/Paths.h"

using corvane::ResourceText;
using corvane::ScriptRun;
using corvane::ScriptRunStatus;
namespace resource = corvane::resource;

namespace {

constexpr QorLong kPassed = 0;
constexpr QorLong kScriptRuleFailed = -6;

void showError(const CStringW& text) {
    corvane::emulation::messageBox(
        text, ResourceText(resource::kScriptCaption),
        corvane::emulation::kMessageIconError | corvane::emulation::kMessageTaskModal);
}

// Notes the path of the rule's script in the run; when there is no script to run, why.
bool findScript(ScriptRun& run) {
    const CStringW& file = run.rule->m_csRuleFileName;
    const std::optional<CStringW> folder = corvane::scriptrules::scriptFolder();
    if (!folder) {
        run.status = ScriptRunStatus::NotConfigured;
        return false;
    }
    run.scriptFolder = *folder;
    if (file.IsEmpty()) {
        run.status = ScriptRunStatus::NoScriptName;
        return false;
    }
    run.scriptPath = corvane::system::join(run.scriptFolder, file);
    if (corvane::system::pathExists(run.scriptPath)) return true;
    run.status = ScriptRunStatus::ScriptMissing;
    CStringW message;
    message.Format(ResourceText(resource::kScriptMissing), run.rule->m_csRuleName,
                   run.rule->m_csRuleName);
    showError(message);
    return false;
}

}  // namespace

QorLong ConcreteQORRule::Execute(QORICadSys* /*cadSystem*/, const CQorData*& /*data*/,
                                 QORResultSet*& /*results*/) const {
    return ExecuteScriptRule();
}

QorLong ConcreteQORRule::ExecuteScriptRule() const {
    ScriptRun run;
    run.rule = this;
    {
        const corvane::emulation::ComponentRuntime runtime;
        corvane::scriptrules::ScriptSession session(run);
        if (session.createHost() && session.addEngines(m_lstEngines) && findScript(run)) {
            CStringW script;
            run.scriptUnreadable = !ReadFromFile(run.scriptPath, script);
            if (run.scriptUnreadable && corvane::scriptrules::isTooLarge(run.scriptPath)) {
                run.status = ScriptRunStatus::ScriptTooLarge;
            } else if (!session.runScript(std::move(script)) &&
                       run.status == ScriptRunStatus::ScriptFailed) {
                QorLong line = run.line;
                QorLong column = run.column;
                CStringW report = session.report();
                CheckForScriptError(line, column, report);
            }
        }
    }
    corvane::scriptrules::notice(run);
    const bool passed =
        run.status == ScriptRunStatus::Succeeded || run.status == ScriptRunStatus::NotConfigured;
    return passed ? kPassed : kScriptRuleFailed;
}

void ConcreteQORRule::CheckForScriptError(QorLong& lineNumber, QorLong& charNumber,
                                          CStringW& message) const {
    lineNumber = -1;
    charNumber = -1;
    CStringW text;
    text.Format(ResourceText(resource::kScriptFailed), m_csRuleName);
    text += u"\n" + message;
    bool batch = false;
    GetBatchModeStatus(&batch);
    if (!batch) showError(text);
}

bool ConcreteQORRule::ReadFromFile(CStringW path, CStringW& text) const {
    std::optional<CStringW> script = corvane::scriptrules::readScript(path);
    if (!script) return false;
    if (text.IsEmpty())
        text = std::move(*script);
    else
        text += *script;
    return true;
}

QorLong ConcreteQORRule::ExecuteVSTARule(const CQorData*& /*data*/,
                                         QORResultSet*& /*results*/) const {
    return kPassed;
}
