#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <corvane/app/BatchMode.h>
#include <corvane/app/StringResources.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/scriptrules/ScriptRunObserver.h>

#include "emulation/Components.h"
#include "scriptrules/ScriptText.h"
#include "scriptrules/Site.h"
#include "scriptrules/TestHost.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"
#include "support/Text.h"

namespace {

using corvane::ResourceText;
using Status = corvane::ScriptRunStatus;
using Texts = std::vector<std::u16string>;
using namespace std::string_view_literals;

constexpr std::size_t kEngines = 2;
const Texts kCalls = {u"a", u"b", u"SetScriptText", u"PrepareScript", u"RunScript", u"EndScript"};

class ScriptRule : public testing::Test {
protected:
    ScriptRule() {
        corvane::SetScriptRunObserver([this](const corvane::ScriptRun& run) {
            EXPECT_EQ(host.references, 0);
            EXPECT_EQ(corvane::emulation::ComponentRuntime::depth(), 0);
            runs.push_back(run);
        });
        site.folder.write("scripts/check.lua", "\xEF\xBB\xBFok");
        rule.m_csRuleName = u"Short bolt";
        rule.m_csRuleFileName = u"check.lua";
        for (std::size_t i = 0; i < kEngines; ++i)
            rule.m_lstEngines.AddTail(kCalls[i]);
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
        const bool fine = status == Status::Succeeded || status == Status::NotConfigured;
        EXPECT_EQ(rule.Execute(nullptr, data, results), fine ? 0 : -6);
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
        EXPECT_EQ(runs.at(0).rule, &rule);
        return runs.at(0);
    }

    Site site;
    ConcreteQORRule rule;
    MessageRecorder messages;
    const corvane::LoadedModule module{CStringW(CORVANE_SCRIPT_HOST)};
    TestHost& host = *module.function<TestHost*>("testHost");
    std::vector<corvane::ScriptRun> runs;
};

TEST_F(ScriptRule, EndsWithoutMessageAtTheFirstCallThatTheHostFails) {
    run({}, Status::Succeeded, kCalls.size());
    EXPECT_EQ(CStringW(host.script), u"ok  ");
    for (const char16_t* fault : {u"QueryInterface", u"null interface"})
        EXPECT_EQ(run({.fault = fault}, Status::HostUnavailable, 0).code,
                  corvane::kErrorNoInterface);
    for (std::size_t at = 0; at < kCalls.size(); ++at) {
        const bool engine = at < kEngines;
        const auto seen =
            run({.fault = kCalls[at]}, engine ? Status::EngineRefused : Status::HostFailed, at + 1);
        EXPECT_EQ(seen.code, corvane::kErrorFail);
        EXPECT_EQ(engine ? seen.engine : seen.operation, kCalls[at]);
    }
}

TEST_F(ScriptRule, TakesNothingButOneForSuccessAndReportsItUnlessInBatchMode) {
    const std::pair<TestHost, std::u16string> cases[] = {
        {{.prepared = 0, .line = 0, .errorType = u"X"}, u"X\n%s: check\n%s:1 %s:17 %s:80004005"},
        {{.prepared = -1}, u"(null)\n%s: check\n%s:5 %s:17 %s:80004005"},
        {{.ran = -1, .line = 2147483647}, u"(null)\n%s: check\n%s:-2147483648 %s:17 %s:80004005"},
        {{.fault = u"GetScriptError", .ran = 2}, u"(null)\n%s: (null)\n%s:0 %s:-1 %s:ffffffff"},
    };
    for (const auto& [setUp, report] : cases) {
        const std::size_t calls = setUp.prepared == 1 ? 5 : 4;
        SetBatchModeStatus(true);
        const auto seen = run(setUp, Status::ScriptFailed, calls);
        EXPECT_EQ(seen.line, setUp.fault.empty() ? setUp.line : -1);
        EXPECT_EQ(seen.errorMessage, setUp.fault.empty() ? u"too short" : u"");
        SetBatchModeStatus(false);
        run(setUp, Status::ScriptFailed, calls);
        CStringW text;
        text.Format(ResourceText(51), rule.m_csRuleName);
        text.AppendFormat(u"\n" + report, ResourceText(53), ResourceText(54), ResourceText(55),
                          ResourceText(56));
        EXPECT_EQ(CStringW(messages.shown.at(0).text), text);
        EXPECT_EQ(messages.shown.at(0).caption, ResourceText(50));
        EXPECT_EQ(messages.shown.at(0).style, 8208U);
    }
}

TEST_F(ScriptRule, GetsItsEnginesBeforeItsScriptIsLookedFor) {
    SetBatchModeStatus(true);
    rule.m_csRuleFileName = u"gone.lua";
    run({}, Status::ScriptMissing, kEngines);
    CStringW missing;
    missing.Format(ResourceText(52), rule.m_csRuleName, rule.m_csRuleName);
    EXPECT_EQ(messages.shown.at(0).text, missing);
    EXPECT_EQ(messages.shown.at(0).caption, ResourceText(50));
    EXPECT_EQ(messages.shown.at(0).style, 8208U);
    rule.m_csRuleFileName = u"folder";
    site.folder.write("scripts/folder/other", "");
    EXPECT_TRUE(run({}, Status::Succeeded, kCalls.size()).scriptUnreadable);
    EXPECT_EQ(CStringW(host.script), u"");
    site.folder.write("scripts/large.lua", "");
    std::filesystem::resize_file(site.folder.path("scripts/large.lua"), (1U << 28) + 1U);
    rule.m_csRuleFileName = u"large.lua";
    run({}, Status::ScriptTooLarge, kEngines);
    rule.m_csRuleFileName = u"";
    run({}, Status::NoScriptName, kEngines);
    site.configure("[OTHER]\ndirectory=x\n");
    run({}, Status::NotConfigured, kEngines);
}

TEST(ScriptText, IsAsLongAsTheBytesLessTheMarks) {
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"", u""},
        {"a\rb\n\rc\r\r\nd\r", u"a\rb\n\rc\r\nd\r "},
        {"x=1\x1Ay=2", u"x=1\x1Ay=2"},
        {"a\0b"sv, u"a\uFFFDb"},
        {"\xF0\x9F\x98\x80", u"\U0001F600  "},
        {"a\xE4\nc", u"a\uFFFD\nc"},
        {"abc\xE4\xB8", u"abc\uFFFD "},
        {"\xFF\xFEx\0\r\0\n\0y"sv, u"x\n\uFFFD     "},
        {"\xFE\xFF\0x\0\r\0\n"sv, u"x\n     "},
        {"\xC3\xBEx\xC3\xAF-\xC2\xBBx\xC3\xBFy", u"x-x\u00FFy    "},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(corvane::scriptrules::scriptText(bytes), text) << bytes;
}

TEST(ScriptText, IsWhatTheFileSaysNow) {
    const TemporaryFolder folder;
    const std::filesystem::path link = folder.path("check.lua");
    const auto expect = [&](std::string_view bytes) {
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(corvane::scriptrules::readScript(folder.wide("check.lua")),
                      corvane::scriptrules::scriptText(bytes));
        }
    };
    // Files that have been as they are for long: the texts of others are not kept.
    const std::filesystem::path here = CORVANE_TEST_SOURCES;
    for (const char* const name : {"TestHost.h", "Site.h", "TestHost.h"}) {
        std::filesystem::remove(link);
        std::filesystem::create_symlink(here / name, link);
        expect(TemporaryFolder::readFile(here / name));
    }
    std::filesystem::remove(link);
    EXPECT_EQ(corvane::scriptrules::readScript(folder.wide("check.lua")), std::nullopt);
    for (const std::string_view bytes : {"yes", "no!"}) {
        folder.write("check.lua", bytes);
        expect(bytes);
    }
}

}  // namespace
