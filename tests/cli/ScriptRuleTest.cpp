#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "CommandLine.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(ScriptRules, EachOutcomeIsToldInWordsThatSayWhatToMend) {
    const CommandLine corvane;
    const struct {
        const char* script;
        std::string rule;
        int status;
        const char* told;
    } cases[] = {
        {"return true", scriptRule("r", "a.lua"), 0, "r +General +major +passed\n"},
        {"", scriptRule("r", "a.lua"), 0, "passed\n"},
        {"\n\nerror('too thin')", scriptRule("r", "a.lua"), 3, "error +too thin .a.lua:3:1.\n"},
        {"return false, 'too big'", scriptRule("r", "a.lua"), 1, "failed +too big\n"},
        {"x = = 1", scriptRule("r", "a.lua"), 3, "error +.*near '=' .a.lua:1:1.\n"},
        {"\nlocal t = nil\nt.x = 1", scriptRule("r", "a.lua"), 3, "nil value.* .a.lua:3:1.\n"},
        {"error('a\\nb')", scriptRule("r", "a.lua"), 3, " a\n +b .a.lua:1:1.\n"},
        {"return true", scriptRule("r", ""), 3,
         "error +the rule names no script file, .*/scripts/UserDefinedFile.xml: "},
        {"return true", scriptRule("r", "b.lua"), 3, "there is no script .*/scripts/b.lua\n"},
        {"mesh.part()", scriptRule("r", "a.lua"), 3, "mesh.* .a.lua:1:1.\n"},
        {"mesh.part()", scriptRule("r", "a.lua", kMeshEngine), 3,
         "error +this run has no part .a.lua:1:1.\n"},
        {"return true", scriptRule("r", "../scripts/a.lua"), 3, "outside the script folder"},
        {"return true", scriptRule("r", "x\\..\\..\\a.lua"), 3, "outside the script folder"},
        {"return true", scriptRule("r", "/etc/passwd"), 3, "\"/etc/passwd\" is outside"},
        {"return true", scriptRule("r", "C:a.lua"), 3, "outside the script folder"},
    };
    for (const auto& [script, rule, status, told] : cases) {
        SCOPED_TRACE(told);
        corvane.folder.write("scripts/a.lua", script);
        corvane.folder.write("rules.xml", ruleFile(rule));
        const ProcessResult result = corvane("run", {"@rules.xml"});
        EXPECT_EQ(result.status, status);
        EXPECT_THAT(result.out, ContainsRegex(told));
        EXPECT_THAT(result.err, IsEmpty()) << "the table says it all";
        EXPECT_EQ(corvane("run", {"@rules.xml", "--batch"}).out, result.out);
    }
}

TEST(ScriptRules, WhatIsNotRegisteredOrConfiguredIsNamed) {
    const CommandLine corvane;
    corvane.folder.write("scripts/a.lua", "return true");
    corvane.folder.write("rules.xml", ruleFile(scriptRule("r", "a.lua", kMeshEngine)));
    const std::string host = CommandLine::exampleRegistry("machine.reg");
    const std::string engine = CommandLine::exampleRegistry("user.reg");
    const std::string broken = corvane.folder.path("broken.tlb");
    corvane.folder.write("broken.lua", "local engine = {}\nengine.x = = 1\n");
    const auto changed = [](std::string text, std::string_view from, std::string_view to) {
        return text.replace(text.find(from), from.size(), to);
    };
    const struct {
        std::string host;
        std::string engine;
        int status;
        const char* told;
    } cases[] = {
        {"", engine, 3, "error .*QorScriptHost.ScriptProcessor is not registered"},
        {changed(host, "QorScriptHost.dll", "None.dll"), engine, 3,
         "error .*its module cannot be loaded"},
        {host, changed(engine, "mesh.tlb", "none.tlb"), 3,
         "error .*refused the engine .*none.tlb: there is no module"},
        {host, changed(engine, "@=", "@=\"" + broken + "\"\n;"), 3,
         "refused the engine .*broken.tlb.*\n +broken.lua:2: .*near '='"},
        {host, "", 0, "passed +the engine \"mesh.tlb\" .C48CD337.* is not registered"},
    };
    for (const auto& [machine, user, status, told] : cases) {
        SCOPED_TRACE(told);
        corvane.folder.write("registry/machine.reg", machine);
        corvane.folder.write("registry/user.reg", user);
        const ProcessResult result = corvane("run", {"@rules.xml"});
        EXPECT_EQ(result.status, status);
        EXPECT_THAT(result.out, ContainsRegex(told));
    }

    corvane.folder.write("registry/user.reg", engine);
    corvane.folder.write("data/Settings/ConfigModule.ini", "[RULE_SCRIPT_LOCATION]\n");
    const ProcessResult result = corvane("run", {"@rules.xml"});
    EXPECT_EQ(result.status, 3) << "a rule that was not run has not passed";
    EXPECT_THAT(result.out, AllOf(ContainsRegex("r +General +major +not run +no script folder: "),
                                  HasSubstr(corvane.folder.path("data/Settings/ConfigModule.ini")),
                                  HasSubstr("1 rule: 0 passed, 1 not run")));
}

TEST(ScriptRules, ResultsQuoteTheHelpPageBesideTheScriptFolder) {
    const CommandLine corvane;
    corvane.folder.write("scripts/a.lua", "return true");
    corvane.folder.write("rules.xml", ruleFile("<Rule Name='r'/>"));
    std::filesystem::create_directories(corvane.folder.path("help/folder.md"));
    const std::string large(70000, 'x');
    const struct {
        std::string page, text, why;
    } cases[] = {
        {"help/r.md", "# R\n\n**Why.** It\r\nbends `x`.\n\n**How it is measured.** So.\n",
         "It bends x."},
        {"help/r.md", "**Why.** </script><b>\xff\n", "</script><b>\uFFFD"},
        {"help/r.md", "# R\n\n**Why.** " + large.substr(0, 5000) + "\n", ""},
        {"help/r.md", "**Why.** It.\n\n" + large, ""},
        {"help/folder.md", "", ""},
        {"help/none.md", "", ""},
        {"../r.md", "**Why.** It.\n", ""},
    };
    for (const auto& [page, text, why] : cases) {
        SCOPED_TRACE(page + text.substr(0, 60));
        if (!text.empty()) corvane.folder.write(page, text);
        corvane.folder.write("scripts/UserDefinedFile.xml",
                             "<Rules><Rule Name='r' File='a.lua' Module='" + page + "'/></Rules>");
        for (const char* scripts : {"@scripts", "@scripts/", "@scripts/."}) {
            corvane("run", {"@rules.xml", "--scripts", scripts, "--output",
                            "json=" + corvane.folder.path("out.json"), "--output",
                            "html=" + corvane.folder.path("out.html")});
            const auto results = nlohmann::json::parse(corvane.folder.read("out.json"));
            EXPECT_EQ(results["parts"][0]["rules"][0].value("why", ""), why);
            EXPECT_THAT(corvane.folder.read("out.html"), Not(HasSubstr("</script><b>")));
        }
    }
}

TEST(ScriptRules, WhatCannotBeReadIsNamedAndFails) {
    const CommandLine corvane;
    std::filesystem::create_directories(corvane.folder.path("scripts/folder.lua"));
    corvane.folder.write("scripts/UserDefinedFile.xml", "<Rules>\n<Rule Name='r'/></Rule>");
    const std::string folder = "directory=" + corvane.folder.path("scripts");
    const struct {
        std::string settings;
        std::string rule;
        const char* told;
    } cases[] = {
        {folder + "\n", scriptRule("r", "folder.lua"), "error +the script .*/folder.lua cannot be"},
        {folder + "\n", "<Rule Name='r'/>", "error .*UserDefinedFile.xml:2:[0-9]+: "},
        {folder, "<Rule Name='r'/>", "not run .*has no line .directory=.* ends in a line end\n"},
    };
    for (const auto& [settings, rule, told] : cases) {
        SCOPED_TRACE(told);
        corvane.folder.write("data/Settings/ConfigModule.ini",
                             "[RULE_SCRIPT_LOCATION]\n" + settings);
        corvane.folder.write("rules.xml", ruleFile(rule));
        const ProcessResult result = corvane("run", {"@rules.xml"});
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, ContainsRegex(told));
    }
    std::filesystem::remove(corvane.folder.path("data/Settings/ConfigModule.ini"));
    EXPECT_THAT(corvane("run", {"@rules.xml"}).out,
                ContainsRegex("ConfigModule.ini cannot be read"));
}

TEST(ScriptRules, TheOptionsForFoldersWinOverTheEnvironment) {
    const CommandLine corvane;
    corvane.folder.write("rules.xml", ruleFile(scriptRule("r", "a.lua", kMeshEngine)));
    corvane.folder.write("scripts/a.lua", "return mesh.part():size() == 40");
    const EnvironmentScope data("CORVANE_DATA_DIR", corvane.folder.path("other"));
    const EnvironmentScope registry("CORVANE_REGISTRY_DIR", corvane.folder.path("other"));
    const EnvironmentScope part("CORVANE_PART", CommandLine::part("bracket"));
    EXPECT_EQ(corvane("run", {"@rules.xml"}).status, 3);
    const std::vector<std::string> folders{"@rules.xml", "--data", "@data", "--registry",
                                           "@registry"};
    EXPECT_EQ(corvane("run", folders).status, 0);
    std::vector<std::string> other = folders;
    other.insert(other.end(), {"--part", CommandLine::part("housing")});
    EXPECT_EQ(corvane("run", other).status, 1) << "the other part is wider";
}

/// The bracket's upright wall lies between x = 0 and x = 1.2.
TEST(ScriptRules, OneScriptServesThreeLimitsAndShowsTheWallAsTheCompiledRuleDoes) {
    const CommandLine corvane;
    const EnvironmentScope data("CORVANE_DATA_DIR", CORVANE_BUILD_DIR "/examples/data");
    const std::string rules = CORVANE_TEST_DATA "/../examples/rules/";
    const ProcessResult result =
        corvane("run", {rules + "walls.xml", rules + "compiled.xml", "--rule", "*wall", "--part",
                        CommandLine::part("bracket"), "--format", "json"});
    EXPECT_EQ(result.status, 1);
    const auto results = nlohmann::json::parse(result.out);
    const struct {
        const char* rule;
        double limit;
        bool passes;
    } cases[] = {{"Thinnest wall", 1.5, false},
                 {"Thinnest printed wall", 0.8, true},
                 {"Thinnest cast wall", 1.27, false},
                 {"Minimum wall", 1.5, false}};
    const auto& judged = results.at("parts").at(0).at("rules");
    ASSERT_EQ(judged.size(), std::size(cases));
    for (std::size_t i = 0; i < judged.size(); ++i) {
        SCOPED_TRACE(cases[i].rule);
        EXPECT_EQ(judged[i].at("name"), cases[i].rule);
        EXPECT_EQ(judged[i].at("verdict"), cases[i].passes ? "passed" : "failed");
        if (cases[i].passes) continue;
        const auto& finding = judged[i].at("findings").at(0);
        EXPECT_EQ(finding.at("limit"), cases[i].limit);
        EXPECT_NEAR(finding.at("measured").get<double>(), 1.2, 1e-9);
        EXPECT_EQ(finding.at("unit"), "mm");
        const auto& place = finding.at("places").at(0);
        EXPECT_EQ(place.at("kind"), "polyline");
        const auto points = place.at("points").get<std::vector<std::vector<double>>>();
        ASSERT_EQ(points.size(), 2U);
        EXPECT_NEAR(std::max(points[0][0], points[1][0]), 1.2, 1e-9);
        EXPECT_NEAR(std::min(points[0][0], points[1][0]), 0, 1e-9);
        EXPECT_GT(points[0][1], 3) << "above the foot";
    }
}

TEST(ScriptRules, TheIndexDefinesARuleAndTheRuleFileItsSeverity) {
    const CommandLine corvane;
    corvane.folder.write("scripts/UserDefinedFile.xml", ruleFile(scriptRule("Known", "a.lua")));
    corvane.folder.write("scripts/a.lua", "return true");
    corvane.folder.write("rules.xml", ruleFile("<Rule Name='known' Severity='7'/>"
                                               "<Rule Name='Unknown' Severity='8'/>"));
    const ProcessResult run = corvane("run", {"@rules.xml"});
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.out, AllOf(ContainsRegex("Known +General +7 +passed\n"),
                               ContainsRegex("Unknown +8 +error +the rule names no script")));
    const ProcessResult show = corvane("show", {"@rules.xml"});
    EXPECT_EQ(show.status, 0);
    EXPECT_THAT(show.out, AllOf(ContainsRegex("definition +index of user-defined rules\n"),
                                ContainsRegex("definition +rule file\n"),
                                ContainsRegex("script +a.lua\n"), Not(HasSubstr("problem"))));
}

}  // namespace
