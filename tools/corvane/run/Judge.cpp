#include "run/Judge.h"

#include <chrono>
#include <exception>
#include <new>
#include <utility>
#include <variant>

#include <corvane/host/CQorData.h>
#include <corvane/host/QORICadSys.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/platform/ComError.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/scriptrules/ScriptFolderScope.h>
#include <corvane/scriptrules/ScriptRunObserver.h>

#include "Text.h"
#include "files/ParameterText.h"
#include "language/Messages.h"
#include "run/FindingCollector.h"
#include "run/RunReason.h"

namespace {

using corvane::ScriptRun;
using corvane::ScriptRunStatus;
using results::RuleResult;
using results::Verdict;

/// A CAD system that has one part open: a file.
class PartFile : public QORICadSys {
public:
    explicit PartFile(CStringW path) : path_(std::move(path)) {}
    CStringW GetActivePartPath() const override { return path_; }

private:
    CStringW path_;
};

/// Hears how a script ends, and what would be a message box, for a block.
class RunWatch {
public:
    RunWatch()
        : formerObserver_(corvane::SetScriptRunObserver([this](const ScriptRun& ended) {
              run = ended;
              run.rule = nullptr;
          })),
          formerSink_(corvane::SetMessageSink(
              [this](const corvane::Message& message) { messages.emplace_back(message.text); })) {}
    RunWatch(const RunWatch&) = delete;
    RunWatch& operator=(const RunWatch&) = delete;
    ~RunWatch() {
        corvane::SetMessageSink(std::move(formerSink_));
        corvane::SetScriptRunObserver(std::move(formerObserver_));
    }

    ScriptRun run;
    std::vector<CStringW> messages;

private:
    corvane::ScriptRunObserver formerObserver_;
    corvane::MessageSink formerSink_;
};

/// What the library says comes in one language.
void addMessages(RuleResult& result, const std::vector<CStringW>& texts) {
    for (const CStringW& text : texts)
        for (const CStringW& line : linesOf(text))
            result.reasons.emplace_back(line.ToUtf8());
}

void addReasons(RuleResult& result, const std::vector<results::Remark>& reasons) {
    result.reasons.insert(result.reasons.end(), reasons.begin(), reasons.end());
}

Verdict verdictOf(const ScriptRun& run, bool hasFindings) {
    if (run.status == ScriptRunStatus::NotConfigured) return Verdict::NotRun;
    if (run.scriptUnreadable) return Verdict::Error;
    if (run.status == ScriptRunStatus::Succeeded)
        return hasFindings ? Verdict::Failed : Verdict::Passed;
    return saysNotMet(run) ? Verdict::Failed : Verdict::Error;
}

void runScript(const CQorRule& rule, FindingCollector& findings, RuleResult& result) {
    RunWatch watch;
    const CQorData* data = nullptr;
    QORResultSet* results = nullptr;
    rule.Execute(nullptr, data, results);
    // What a message box says of the run is less than what the run itself tells.
    result.verdict = verdictOf(watch.run, findings.any());
    if (result.verdict != Verdict::Failed)
        addReasons(result, remarks([&watch] { return reasonsOf(watch.run); }));
    else if (!findings.any())
        findings.AddFinding(watch.run.errorMessage);
}

void runModuleRule(const CQorRule& rule, const CStringW& part, FindingCollector& findings,
                   RuleResult& result) {
    RunWatch watch;
    PartFile cadSystem(part);
    const CQorData none;
    const CQorData* data = &none;
    QORResultSet* results = &findings;
    const QorLong status = rule.Execute(&cadSystem, data, results);
    addMessages(result, watch.messages);
    result.verdict = findings.any() ? Verdict::Failed : Verdict::Passed;
    if (status == 0) return;
    // A rule that says that it could not work has judged nothing, whatever it found before.
    result.reasons.push_back(remark("the rule ended with result {0}", status));
    result.verdict = Verdict::Error;
}

void run(const LoadedRule& loaded, const corvane::RunContext& context, FindingCollector& findings,
         RuleResult& result) {
    corvane::RunContext own = context;
    own.results = &findings;
    const corvane::RunContextScope scope(own);
    const corvane::ScriptFolderScope scripts(loaded.scriptFolder);
    try {
        if (loaded.isScript())
            runScript(*loaded.rule, findings, result);
        else
            runModuleRule(*loaded.rule, context.partPath, findings, result);
        return;
    } catch (const _com_error& error) {
        addReasons(result, {remark("running the rule failed: {0}", statusText(error.Error()))});
    } catch (const std::bad_alloc&) {
        addReasons(result, {remark("running the rule failed: the memory ran out")});
    } catch (const std::exception& error) {
        addReasons(result, {remark("running the rule failed: {0}", error.what())});
    } catch (...) {
        addReasons(result, {remark("running the rule failed with an unknown exception")});
    }
    result.verdict = Verdict::Error;
}

/// What the script is given, constraints applied.
results::Parameter parameterOf(const corvane::ScriptParameter& parameter) {
    results::Parameter result{parameter.number, parameter.name.ToUtf8(), true, {}};
    for (const corvane::ScriptValue& value : parameter.values) {
        if (const auto* text = std::get_if<CStringW>(&value))
            result.values.emplace_back(text->ToUtf8());
        else if (const auto* whole = std::get_if<std::int64_t>(&value))
            result.values.emplace_back(*whole);
        else if (const auto* number = std::get_if<double>(&value))
            result.values.emplace_back(*number);
        else
            result.values.emplace_back(std::get<bool>(value));
    }
    return result;
}

void describe(const CQorRule& rule, RuleResult& result) {
    result.name = rule.m_csRuleName.ToUtf8();
    result.category = rule.m_csRuleCategory.ToUtf8();
    result.description = rule.m_csRuleDescription.ToUtf8();
    result.source = rule.m_csRuleSource.ToUtf8();
    result.severity.number = rule.m_lRuleSeverity;
}

void addParameters(const LoadedRule& loaded, const corvane::RunContext& context,
                   RuleResult& result) {
    if (loaded.isScript()) {
        for (const corvane::ScriptParameter& parameter : context.parameters)
            result.parameters.push_back(parameterOf(parameter));
        return;
    }
    const CQorRule& rule = *loaded.rule;
    for (int i = 0; i < rule.m_Parameters.GetSize(); ++i)
        if (const CQorParamStorage* storage = rule.m_Parameters.GetAt(i))
            result.parameters.push_back(valuesOf(*storage));
}

}  // namespace

RuleResult judge(const LoadedRule& loaded, const corvane::RunContext& context) {
    RuleResult result;
    describe(*loaded.rule, result);
    addParameters(loaded, context, result);
    addReasons(result, loaded.problems);
    result.verdict = Verdict::Error;
    if (!loaded.mayRun()) return result;
    FindingCollector findings(loaded.rule->m_csRuleName);
    const auto start = std::chrono::steady_clock::now();
    run(loaded, context, findings, result);
    const auto taken = std::chrono::steady_clock::now() - start;
    result.seconds =
        static_cast<double>(std::chrono::duration_cast<std::chrono::microseconds>(taken).count()) /
        1e6;
    result.findings = findings.take();
    return result;
}
