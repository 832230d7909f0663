#include "CheckRule.h"

#include <exception>
#include <utility>

#include <corvane/host/CQorData.h>
#include <corvane/host/QORICadSys.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/platform/ComError.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/scriptrules/ScriptRunObserver.h>

#include "RunReason.h"
#include "Text.h"

namespace {

/// A CAD system that has one part open: a file.
class PartFile : public QORICadSys {
public:
    explicit PartFile(CStringW path) : path_(std::move(path)) {}
    CStringW GetActivePartPath() const override { return path_; }

private:
    CStringW path_;
};

class Findings : public QORResultSet {
public:
    void AddFinding(const CStringW& text) override {
        const std::vector<CStringW> lines = linesOf(text);
        texts.insert(texts.end(), lines.begin(), lines.end());
        any = true;
    }

    std::vector<CStringW> texts;
    bool any = false;
};

/// Hears how a script ends, for a block, and silences its message boxes: what they say is less than
/// what is heard here.
class ScriptWatch {
public:
    ScriptWatch()
        : formerObserver_(corvane::SetScriptRunObserver([this](const corvane::ScriptRun& run) {
              status = run.status;
              ranUnread = run.scriptUnreadable;
              reasons = reasonsOf(run);
          })),
          formerSink_(corvane::SetMessageSink([](const corvane::Message&) {})) {}
    ScriptWatch(const ScriptWatch&) = delete;
    ScriptWatch& operator=(const ScriptWatch&) = delete;
    ~ScriptWatch() {
        corvane::SetMessageSink(std::move(formerSink_));
        corvane::SetScriptRunObserver(std::move(formerObserver_));
    }

    corvane::ScriptRunStatus status = corvane::ScriptRunStatus::Succeeded;
    bool ranUnread = false;  ///< What ran was an empty text in place of the script.
    std::vector<CStringW> reasons;

private:
    corvane::ScriptRunObserver formerObserver_;
    corvane::MessageSink formerSink_;
};

void runScript(const CQorRule& rule, Outcome& outcome) {
    ScriptWatch watch;
    const CQorData* data = nullptr;
    QORResultSet* results = nullptr;
    const QorLong result = rule.Execute(nullptr, data, results);
    outcome.reasons.insert(outcome.reasons.end(), watch.reasons.begin(), watch.reasons.end());
    if (watch.status == corvane::ScriptRunStatus::NotConfigured)
        outcome.verdict = Verdict::NotRun;
    else
        outcome.verdict = result == 0 && !watch.ranUnread ? Verdict::Passed : Verdict::Failed;
}

void runModuleRule(const CQorRule& rule, const CStringW& part, Outcome& outcome) {
    PartFile cadSystem(part);
    Findings findings;
    const CQorData none;
    const CQorData* data = &none;
    QORResultSet* results = &findings;
    const QorLong result = rule.Execute(&cadSystem, data, results);
    outcome.reasons.insert(outcome.reasons.end(), findings.texts.begin(), findings.texts.end());
    if (result != 0) {
        CStringW text;
        text.Format(u"the rule ended with result %d", result);
        outcome.reasons.push_back(text);
    }
    outcome.verdict = result == 0 && !findings.any ? Verdict::Passed : Verdict::Failed;
}

}  // namespace

Outcome checkRule(const LoadedRule& loaded, const CStringW& part) {
    Outcome outcome{Verdict::Failed, loaded.problems};
    try {
        if (loaded.isScript()) {
            runScript(*loaded.rule, outcome);
        } else if (loaded.origin == RuleOrigin::Module) {
            runModuleRule(*loaded.rule, part, outcome);
        }
    } catch (const _com_error& error) {
        outcome.reasons.push_back(u"running the rule failed: " + statusText(error.Error()));
        outcome.verdict = Verdict::Failed;
    } catch (const std::exception& error) {
        outcome.reasons.push_back(u"running the rule failed: " + CStringW(error.what()));
        outcome.verdict = Verdict::Failed;
    } catch (...) {
        outcome.reasons.push_back(u"running the rule failed with an unknown exception");
        outcome.verdict = Verdict::Failed;
    }
    return outcome;
}
