#include <cstdio>

#include <corvane/app/BatchMode.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/scriptrules/ParametricScriptRule.h>
#include <corvane/scriptrules/ScriptRunObserver.h>
#include <corvane/xml/QorXMLDocument.h>

struct Printer : QORResultSet {
    void AddFinding(const CStringW& text) override { std::puts(text.ToUtf8().c_str()); }
    void ReportFinding(const corvane::Finding& finding) override {
        AddFinding(finding.message);
        for (const corvane::Place& place : finding.places)
            for (const auto& [x, y, z] : place.points)
                std::printf("  at %.2f, %.2f, %.2f mm\n", x, y, z);
    }
} printer;
int main(int count, char** arguments) {
    QorXMLDocument file;
    const auto* root = count == 3 ? file.LoadFromFile(CStringW::FromUtf8(arguments[1])) : nullptr;
    if (!root) return 2;
    SetBatchModeStatus(true);
    corvane::SetScriptRunObserver([](const corvane::ScriptRun& run) {
        const bool ran = run.status == corvane::ScriptRunStatus::Succeeded && !run.scriptUnreadable;
        const char* verdict = ran ? "passed" : run.SaysNotMet() ? "failed" : "no verdict";
        std::printf("%s: %s\n", run.rule->m_csRuleName.ToUtf8().c_str(), verdict);
    });
    const CQorData* data = nullptr;
    corvane::RunContext context;
    context.partPath = CStringW::FromUtf8(arguments[2]);
    context.results = &printer;
    for (QorXMLNode& element : corvane::ChildElements(*root, u"Rule")) {
        corvane::ParametricScriptRule rule;
        rule.PopulateScriptRule(&element);
        context.parameters = rule.GetScriptParameters(context.partMaterial);
        const corvane::RunContextScope scope(context);
        rule.Execute(nullptr, data, context.results);
    }
}
