#include "doctor/ScriptTrial.h"

#include <utility>

#include <corvane/scriptrules/ConcreteQORRule.h>

using corvane::ScriptRun;
using corvane::ScriptRunStatus;

namespace {

/// Hears how the run ends, for a block.
class RunWatch {
public:
    explicit RunWatch(ScriptRun& run)
        : former_(corvane::SetScriptRunObserver([&run](const ScriptRun& ended) { run = ended; })) {}
    RunWatch(const RunWatch&) = delete;
    RunWatch& operator=(const RunWatch&) = delete;
    ~RunWatch() { corvane::SetScriptRunObserver(std::move(former_)); }

private:
    corvane::ScriptRunObserver former_;
};

}  // namespace

ScriptRun tryHost(const CStringW& engine) {
    ScriptRun run;
    const RunWatch watch(run);
    ConcreteQORRule rule;
    rule.m_csRuleFileName.Empty();
    if (!engine.IsEmpty()) rule.m_lstEngines.AddTail(engine);
    const CQorData* data = nullptr;
    QORResultSet* results = nullptr;
    rule.Execute(nullptr, data, results);
    run.rule = nullptr;
    return run;
}

bool isAccepted(const ScriptRun& run) {
    return run.status == ScriptRunStatus::NoScriptName ||
           run.status == ScriptRunStatus::NotConfigured;
}
