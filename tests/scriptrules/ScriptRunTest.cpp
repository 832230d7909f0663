#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include <corvane/app/BatchMode.h>
#include <corvane/app/StringResources.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/scriptrules/ScriptRunObserver.h>

#include "platform/Components.h"
#include "scriptrules/Site.h"
#include "scriptrules/TestHost.h"
#include "support/MessageRecorder.h"
#include "support/Text.h"

namespace {

using corvane::ResourceText;
using Status = corvane::ScriptRunStatus;
using Texts = std::vector<std::u16string>;

constexpr std::size_t kEngines = 2;
const Texts kCalls = {u"a.tlb",         u"b.tlb",     u"SetScriptText",
                      u"PrepareScript", u"RunScript", u"EndScript"};

TestHost& testHost() {
    static const corvane::LoadedModule module(CStringW(CORVANE_SCRIPT_HOST));
    return *module.function<TestHost*>("testHost");
}

class ScriptRule : public testing::Test {
protected:
    ScriptRule() {
        corvane::SetScriptRunObserver([this](const corvane::ScriptRun& run) {
            EXPECT_EQ(host.references, 0);
            EXPECT_EQ(corvane::platform::ComponentRuntime::depth(), 0);
            EXPECT_EQ(run.rule, &rule);
            runs.push_back(run);
        });
        site.folder.write("scripts/check.lua", "\xEF\xBB\xBFok");
        rule.m_csRuleName = u"Short bolt";
        rule.m_csRuleFileName = u"check.lua";
        rule.m_lstEngines.AddTail(u"a.tlb");
        rule.m_lstEngines.AddTail(u"b.tlb");
    }
    ~ScriptRule() override {
        corvane::SetScriptRunObserver({});
        SetBatchModeStatus(false);
    }

    /// One run with the host as it is set up, which must make so many of the calls and end so.
    corvane::ScriptRun run(TestHost setUp, Status status, std::size_t count) {
        host = setUp;
        messages.shown.clear();
        runs.clear();
        const CQorData* data = nullptr;
        QORResultSet* results = nullptr;
        const bool passed = status == Status::Succeeded || status == Status::NotConfigured;
        EXPECT_EQ(rule.Execute(nullptr, data, results), passed ? 0 : -6);
        Texts calls(kCalls.begin(), kCalls.begin() + static_cast<std::ptrdiff_t>(count));
        if (status == Status::ScriptFailed) calls.emplace_back(u"GetScriptError");
        EXPECT_EQ(host.calls, calls);
        bool batch = true;
        GetBatchModeStatus(&batch);
        const bool shown =
            status == Status::ScriptMissing || (status == Status::ScriptFailed && !batch);
        EXPECT_EQ(messages.shown.size(), shown ? 1 : 0);
        EXPECT_EQ(runs.size(), 1U);
        EXPECT_EQ(runs.at(0).status, status);
        return runs.at(0);
    }

    Site site;
    ConcreteQORRule rule;
    MessageRecorder messages;
    TestHost& host = testHost();
    std::vector<corvane::ScriptRun> runs;
};

TEST_F(ScriptRule, EndsWithoutMessageAtTheFirstCallThatTheHostFails) {
    run({}, Status::Succeeded, kCalls.size());
    EXPECT_EQ(CStringW(host.script), u"ok  ");
    for (const char16_t* fault :
         {u"CreateInstance", u"null object", u"QueryInterface", u"null interface"})
        EXPECT_LT(run({.fault = fault}, Status::HostUnavailable, 0).code, 0);
    for (std::size_t at = 0; at < kCalls.size(); ++at) {
        const bool engine = at < kEngines;
        const auto seen =
            run({.fault = kCalls[at]}, engine ? Status::EngineRefused : Status::HostFailed, at + 1);
        EXPECT_EQ(seen.code, kErrorFail);
        EXPECT_EQ(engine ? seen.engine : seen.operation, kCalls[at]);
    }
}

TEST_F(ScriptRule, TakesNothingButOneForSuccess) {
    for (const bool batch : {false, true}) {
        SetBatchModeStatus(batch);
        for (const std::int16_t value : {std::int16_t(0), std::int16_t(-1), std::int16_t(2)}) {
            run({.prepared = value}, Status::ScriptFailed, 4);
            run({.ran = value}, Status::ScriptFailed, 5);
        }
    }
}

TEST_F(ScriptRule, ReportsWhatTheHostSaysOfTheScript) {
    const std::pair<TestHost, std::u16string> cases[] = {
        {{.ran = 0, .line = 0, .errorType = u"limit"}, u"limit\n%s: check\n%s:1 %s:17 %s:80004005"},
        {{.ran = 0, .line = 2147483647}, u"(null)\n%s: check\n%s:-2147483648 %s:17 %s:80004005"},
        {{.fault = u"GetScriptError", .ran = 0}, u"(null)\n%s: (null)\n%s:0 %s:-1 %s:ffffffff"},
    };
    for (const auto& [setUp, report] : cases) {
        const auto seen = run(setUp, Status::ScriptFailed, 5);
        CStringW text;
        text.Format(ResourceText(51), rule.m_csRuleName);
        text.AppendFormat(u"\n" + report, ResourceText(53), ResourceText(54), ResourceText(55),
                          ResourceText(56));
        EXPECT_EQ(CStringW(messages.shown.at(0).text), text);
        EXPECT_EQ(messages.shown.at(0).style, 8208U);
        const bool told = setUp.fault.empty();
        EXPECT_EQ(seen.line, told ? setUp.line : -1);
        EXPECT_EQ(seen.errorMessage, told ? u"too short" : u"");
        EXPECT_EQ(seen.errorCode, told ? kErrorFail : -1);
    }
}

TEST_F(ScriptRule, SaysWhyAScriptDidNotRun) {
    SetBatchModeStatus(true);
    rule.m_csRuleFileName = u"gone.lua";
    run({}, Status::ScriptMissing, kEngines);
    rule.m_csRuleFileName = u"folder";
    site.folder.write("scripts/folder/other", "");
    EXPECT_TRUE(run({}, Status::Succeeded, kCalls.size()).scriptUnreadable);
    EXPECT_EQ(CStringW(host.script), u"");
    rule.m_csRuleFileName = u"";
    run({}, Status::NoScriptName, kEngines);
    for (const char* ini : {"", "[OTHER]\ndirectory=x\n", "[RULE_SCRIPT_LOCATION]\ndirectory=x"}) {
        site.configure(ini);
        run({}, Status::NotConfigured, kEngines);
    }
    std::filesystem::remove_all(site.folder.path("data"));
    run({}, Status::NotConfigured, kEngines);
    for (const std::string key : {Site::kModule, Site::kHost}) {
        site.enter("HKEY_CLASSES_ROOT\\", {key + "gone"});
        EXPECT_LT(run({}, Status::HostUnavailable, 0).code, 0);
    }
}

}  // namespace
