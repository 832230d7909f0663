#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "CommandLine.h"

namespace {

using Json = nlohmann::json;

class Lint : public testing::Test {
protected:
    Lint() {
        corvane.folder.write(
            "scripts/UserDefinedFile.xml",
            ruleFile(scriptRule("Wall", "wall.lua",
                                "<Parameter Name='limit' Type='1'><Value>1.5</Value>"
                                "</Parameter>" +
                                    kMeshEngine)));
        corvane.folder.write("scripts/wall.lua", "return params.limit > mesh.part():thinnest()\n");
    }

    Json problemsOf(const std::string& rules, std::vector<std::string> more = {}) const {
        corvane.folder.write("rules.xml", rules);
        return ask([&more] {
            more.insert(more.end(), {"--format", "json", "@rules.xml"});
            return more;
        }());
    }
    Json ask(std::vector<std::string> arguments) const {
        const ProcessResult result = corvane("lint", std::move(arguments));
        const Json json = Json::parse(result.out, nullptr, false);
        EXPECT_TRUE(json.is_object()) << result.out << result.err;
        return json.is_object() ? json.at("problems") : Json::array();
    }

    const CommandLine corvane;
};

struct Slip {
    const char* code;
    std::string rule;  ///< With "^" before the place.
};

TEST_F(Lint, TellsEachSlipInARuleFileWithItsPlace) {
    const Slip slips[] = {
        {"L101", "<Rule Name='Wall'>^<Paramter Type='1'/></Rule>"},
        {"L102", "<Rule Name='Wall' ^Serverity='1'/>"},
        {"L103", "<Rule Name='Wall'>^stray</Rule>"},
        {"L104", "^<Rule Severity='1' File='wall.lua'/>"},
        {"L105", "<Rule Name='Wall'><Categories/>^<Categories/></Rule>"},
        {"L201", "<Rule Name='Wall' Severity='^high'/>"},
        {"L202", "<Rule Name='Wall' Severity='^2nd'/>"},
        {"L203", "<Rule Name='Wall' Severity='^1,5'/>"},
        {"L204", "<Rule Name='Wall' Severity='^9'/>"},
        {"L205", "<Rule Name='Wall' CategoryText='^Milking'/>"},
        {"L206", "<Rule Name='Wall'><Parameter Type='1' Status='^yes'/></Rule>"},
        {"L207", "<Rule Name='Wall' Severity='^4294967296'/>"},
        {"L301",
         "<Rule Name='Maximum envelope' File='partrules.dll'><Parameter Type='^7'/></Rule>"},
        {"L302", "<Rule Name='Wall'><Parameter Type='1'/>^<Parameter Type='1'/></Rule>"},
        {"L303", "<Rule Name='Wall'><Constraint Type='^Materials' Value='ABS'/></Rule>"},
        {"L304",
         "<Rule Name='Wall'>^<Parameter Type='1'><Operator>1</Operator><Value>1</Value>"
         "</Parameter></Rule>"},
        {"L305",
         "<Rule Name='Wall'>^<Parameter Type='1'><Operator>12</Operator></Parameter></Rule>"},
        {"L306",
         "<Rule Name='Wall'><Parameter Type='1'><Value ^Attribute5='x'/></Parameter></Rule>"},
        {"L307",
         "<Rule Name='Wall'><Parameter Type='1'>^<Value Attribute1='x'/></Parameter></Rule>"},
        {"L401", "<Rule Name='X' File='^nowhere.dll'/>"},
        {"L501", "<Rule Name='^Wal'/>"},
        {"L503", "<Rule Name='X' File='^nowhere.lua'/>"},
        {"L506",
         "<Rule Name='X' File='wall.lua'><Engines><Engine "
         "GUID='^{00000000-0000-0000-0000-000000000001}' LCID='0'/></Engines></Rule>"},
        {"L508", "<Rule Name='X' File='^../wall.lua'/>"},
        {"L511", "<Rule Name='Wall'/><Rule Name='^WALL'/>"}};
    for (const Slip& slip : slips) {
        std::string rule = slip.rule;
        const auto column = static_cast<int>(rule.find('^')) + 1;
        rule.erase(rule.find('^'), 1);
        const Json problems = problemsOf("<Rules>\n" + rule + "\n</Rules>\n");
        bool isThere = false;
        for (const Json& problem : problems)
            isThere =
                isThere || (problem.at("code") == slip.code && problem.value("line", 0) == 2 &&
                            problem.value("column", 0) == column);
        EXPECT_TRUE(isThere) << slip.code << ' ' << slip.rule << '\n' << problems.dump(1);
    }
}

TEST_F(Lint, TellsFilesThatHoldNoRule) {
    EXPECT_EQ(problemsOf("<Rules>\n<Rule>\n").at(0).at("code"), "L001");
    EXPECT_EQ(problemsOf("<Rules/>").at(0).at("code"), "L002");
}

TEST_F(Lint, TellsWhatIsWrongWithAScriptInTheScript) {
    struct Case {
        const char* code;
        int line;
        std::string script;
    };
    const Case cases[] = {{"L504", 2, "local a = 1\nlocal b = = 2\n"},
                          {"L505", 2, "-- an unknown engine\nreturn part.volume() > mehs.size()\n"},
                          {"L509", 0, "return '\xE4' ~= 'a'\n"},
                          {"L510", 1, "return params.limits ~= nil\n"}};
    for (const Case& one : cases) {
        corvane.folder.write("scripts/wall.lua", one.script);
        const Json problems = problemsOf("<Rules>\n<Rule Name='Wall' Severity='1'/>\n</Rules>\n");
        ASSERT_EQ(problems.size(), 1U) << one.code << problems.dump(1);
        EXPECT_EQ(problems.at(0).at("code"), one.code);
        EXPECT_EQ(problems.at(0).value("line", 0), one.line) << one.code;
        EXPECT_TRUE(problems.at(0).at("file").get<std::string>().ends_with("scripts/wall.lua"));
    }
}

TEST_F(Lint, TellsATypeLibraryThatIsNone) {
    std::string registry = CommandLine::exampleRegistry("user.reg");
    const std::string name = "mesh.tlb";
    const std::size_t end = registry.find(name) + name.size();
    ASSERT_GT(end, name.size());
    const std::size_t from = registry.rfind('"', end - 1) + 1;
    corvane.folder.write("mesh.tlb", "no type library");
    registry.replace(from, end - from, corvane.folder.path("mesh.tlb"));
    corvane.folder.write("registry/user.reg", registry);
    const Json problems = problemsOf(ruleFile("<Rule Name='Wall' Severity='1'/>"));
    ASSERT_EQ(problems.size(), 1U) << problems.dump(1);
    EXPECT_EQ(problems.at(0).at("code"), "L507");
    EXPECT_TRUE(problems.at(0).at("file").get<std::string>().ends_with("UserDefinedFile.xml"));
}

TEST_F(Lint, SaysOnceThatNoScriptCanRun) {
    const std::string rules = ruleFile(scriptRule("A", "wall.lua") + scriptRule("B", "wall.lua"));
    corvane.folder.write("registry/machine.reg", "REGEDIT4\n");
    corvane.folder.write("scripts/wall.lua", "return true\n");
    const Json withoutHost = problemsOf(rules, {"--off", "L506"});
    ASSERT_EQ(withoutHost.size(), 1U) << withoutHost.dump(1);
    EXPECT_EQ(withoutHost.at(0).at("message"), "no script host is installed");
    corvane.folder.write("data/Settings/ConfigModule.ini", "");
    const Json withoutFolder = problemsOf(rules);
    ASSERT_EQ(withoutFolder.size(), 1U) << withoutFolder.dump(1);
    EXPECT_EQ(withoutFolder.at(0).at("code"), "L602");
}

TEST_F(Lint, LeavesAloneWhatAnEntityHolds) {
    const std::string head =
        "<!DOCTYPE r [<!ENTITY n 'Wall'><!ENTITY v '1'>"
        "<!ENTITY r \"<Rule Name='Wall' Severity='1'/>\">]>";
    for (const char* rules :
         {"<r>&r;</r>", "<r><Rule Name='&n;' Severity='&v;'/></r>",
          "<r><Rule Name='Wall'><Parameter Type='&v;'><Operator>&v;</Operator>&v;"
          "<Value>1</Value></Parameter></Rule></r>"})
        EXPECT_EQ(problemsOf(head + rules), Json::array()) << rules;
}

TEST_F(Lint, KnowsTheEncodingsOfTheReader) {
    corvane.folder.write("scripts/UserDefinedFile.xml",
                         ruleFile(scriptRule("W\xC3\xA4nde \xE2\x82\xAC", "wall.lua")));
    corvane.folder.write("scripts/wall.lua", "return true\n");
    EXPECT_EQ(problemsOf("<?xml version='1.0' encoding='windows-1252'?>"
                         "<r><Rule Name='W\xE4nde \x80' Severity='1'/></r>"),
              Json::array());
}

TEST_F(Lint, DocumentsEachCodeInItsPage) {
    const ProcessResult result = corvane("lint", {"--format", "sarif"});
    const Json sarif = Json::parse(result.out, nullptr, false);
    ASSERT_TRUE(sarif.is_object()) << result.out << result.err;
    std::string table;
    for (const Json& rule : sarif.at("runs").at(0).at("tool").at("driver").at("rules"))
        table += "| `" + rule.at("id").get<std::string>() + "` " +
                 rule.at("name").get<std::string>() + " | " +
                 rule.at("defaultConfiguration").at("level").get<std::string>() + " | " +
                 rule.at("shortDescription").at("text").get<std::string>() + " | " +
                 rule.at("help").at("text").get<std::string>() + " |\n";
    const std::string page = TemporaryFolder::readFile(CORVANE_TEST_DATA "/../docs/lint.md");
    EXPECT_NE(page.find("|---|---|---|---|\n" + table), std::string::npos) << table;
}

TEST_F(Lint, LooksAtTheIndexAndTheSettingsWithoutAFile) {
    const EnvironmentScope limit("CORVANE_SCRIPT_MAX_SECONDS", "ten");
    corvane.folder.write("scripts/UserDefinedFile.xml",
                         ruleFile(scriptRule("Wall", "wall.lua") + scriptRule("wall", "wall.lua")));
    corvane.folder.write("scripts/wall.lua", "return true\n");
    std::set<std::string> codes;
    for (const Json& problem : ask({"--format", "json"}))
        codes.insert(problem.at("code"));
    EXPECT_EQ(codes, (std::set<std::string>{"L502", "L601"}));
}

TEST_F(Lint, FindsNothingInWhatIsShipped) {
    const std::string examples = CORVANE_TEST_DATA "/../examples/";
    const EnvironmentScope data("CORVANE_DATA_DIR", CORVANE_BUILD_DIR "/examples/data");
    const Json problems =
        ask({"--format", "json", examples + "rules/compiled.xml", examples + "rules/scripts.xml",
             examples + "rules/walls.xml", examples + "scripts/UserDefinedFile.xml"});
    EXPECT_EQ(problems, Json::array()) << problems.dump(1);
}

TEST_F(Lint, ReadsWhatTheParserReads) {
    // A document type with signs of markup in its texts, a section, other line ends, a prefix.
    const Json problems = problemsOf(
        "<?xml version='1.0'?>\r\n<!DOCTYPE r [<!ENTITY e \"a]>\"><!-- ]> -->]>\r\n<r "
        "xmlns:x='urn:x' x:a='&e;'>\r\n"
        "<!-- <Rule/> -->\r\n<x:other/>\r\n<Rule Name='&#87;all' "
        "Description='&e;'><![CDATA[<Rule>]]></Rule>\r\n</r>");
    ASSERT_EQ(problems.size(), 1U) << problems.dump(1);
    EXPECT_EQ(problems.at(0).at("code"), "L103");
    EXPECT_EQ(problems.at(0).at("line"), 6);
}

TEST_F(Lint, KnowsEveryNameThatTheHostGivesScripts) {
    corvane.folder.write("scripts/wall.lua", "for name in pairs(_G) do result.note(name) end\n");
    corvane.folder.write("rules.xml", ruleFile(scriptRule("Wall", "wall.lua")));
    const ProcessResult run =
        corvane("run", {"--format", "json", "@rules.xml", "--part", CommandLine::part("bracket")});
    const Json results = Json::parse(run.out, nullptr, false);
    ASSERT_TRUE(results.is_object()) << run.out << run.err;
    std::string script;
    int count = 0;
    for (const Json& finding : results.at("parts").at(0).at("rules").at(0).at("findings")) {
        script += "do local _ = " + finding.at("message").get<std::string>() + " end\n";
        ++count;
    }
    ASSERT_GT(count, 20);
    corvane.folder.write("scripts/wall.lua", script);
    const Json problems = problemsOf(ruleFile(scriptRule("Wall", "wall.lua")));
    EXPECT_EQ(problems, Json::array()) << problems.dump(1);
}

TEST_F(Lint, StrictRunsNothingWhenItFindsSomething) {
    corvane.folder.write("rules.xml", ruleFile("<Rule Name='Wall' Serverity='1'/>"));
    const ProcessResult result =
        corvane("run", {"--strict", "@rules.xml", "--part", CommandLine::part("bracket")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("L102"), std::string::npos) << result.err;
}

TEST_F(Lint, TurnsACodeOff) {
    EXPECT_EQ(problemsOf(ruleFile("<Rule Name='Wall' Serverity='1'/>"), {"--off", "L102"}),
              Json::array());
}

}  // namespace
