#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "cli/CommandLine.h"
#include "part/Shapes.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// A site with rules of its own and a part of 201 x 20 x 20 mm.
class Include : public testing::Test {
protected:
    Include() {
        shapes::write(shapes::box(201, 20, 20), corvane.folder.path("part.brep"));
        corvane.folder.write("scripts/own.lua", "return false, 'our own way'");
    }
    ProcessResult run(const std::string& rules, const std::vector<std::string>& more = {}) {
        corvane.folder.write("site.xml", ruleFile(rules));
        std::vector<std::string> arguments{"@site.xml", "--part", "@part.brep"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return corvane("run", arguments);
    }
    CommandLine corvane;
};

TEST_F(Include, ASiteChangesAParameterASeverityOrAWholeRuleAndCopiesNothing) {
    const std::string set = "<Include Set='fdm'/>";
    const std::string larger = "<Parameter Name='length' Type='1'><Value>202</Value></Parameter>";
    const struct {
        std::string rules;
        int status;
        const char* told;
    } cases[] = {
        {set, 1, "FDM build volume +Additive manufacturing +critical +failed +the part's longest"},
        {set + "<Rule Name='fdm build VOLUME'>" + larger + "</Rule>", 0,
         "FDM build volume +Additive manufacturing +critical +passed"},
        {set + "<Rule Name='FDM build volume'><Parameter Name='Length'><Value>202</Value>"
               "</Parameter></Rule>",
         0, "FDM build volume +Additive manufacturing +critical +passed"},
        {set + "<Rule Name='FDM build volume' Severity='3'/>", 1,
         "FDM build volume +Additive manufacturing +minor +failed +the part's longest"},
        {set + "<Rule Name='FDM build volume' Severity='2' File='own.lua'/>", 1,
         "FDM build volume +major +failed +our own way"},
        {set + "<Exclude Name='FDM build volume'/>", 0, "rules?: [0-9]+ passed\n"},
        {set + "<Rule Name='Ours' Severity='2' File='own.lua'/>", 1, "Ours +major +failed"},
    };
    for (const auto& [rules, status, told] : cases) {
        SCOPED_TRACE(rules);
        const ProcessResult result =
            run(rules, {"--rule", "FDM build*", "--rule", "Ours", "--rule", "Closed*"});
        EXPECT_EQ(result.status, status) << result.out << result.err;
        EXPECT_THAT(result.out, ContainsRegex(told));
        EXPECT_EQ(corvane("lint", {"@site.xml", "--off", "L205"}).status, 0)
            << corvane("lint", {"@site.xml"}).out;
    }
}

TEST_F(Include, FilesOfASiteBuildOnEachOther) {
    corvane.folder.write("shop.xml",
                         ruleFile("<Include Set='fdm'/><Rule Name='FDM build volume' Severity='4'>"
                                  "<Parameter Type='1'><Value>300</Value></Parameter></Rule>"));
    const ProcessResult result =
        run("<Include File='shop.xml'/><Rule Name='FDM build volume'><Parameter Type='2'>"
            "<Value>10</Value></Parameter></Rule>",
            {"--rule", "FDM build*"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out,
                AllOf(ContainsRegex("info +failed +the part's shortest side is 20.00 mm, "
                                    "at most 10.00 mm"),
                      Not(HasSubstr("longest"))));
    const std::string source = corvane("show", {"@site.xml"}).out;
    EXPECT_THAT(source,
                ContainsRegex("3D Hubs.*; changed at .*shop.xml:2; changed at .*site.xml:2"));
    run("<Include File='shop.xml'/><Rule Name='FDM build volume' Source='Works standard 7'/>");
    EXPECT_THAT(corvane("show", {"@site.xml"}).out, ContainsRegex("source +Works standard 7"));
}

TEST_F(Include, ARuleThatAFileDefinesIsOverriddenAsOneOfAnIndex) {
    corvane.folder.write("scripts/own.lua", "return false, 'limit ' .. params.limit");
    corvane.folder.write(
        "shop.xml", ruleFile(scriptRule("Ours", "own.lua",
                                        "<Parameter Name='limit' Type='1'><ParameterType>4"
                                        "</ParameterType><Value>1</Value></Parameter>") +
                             moduleRule("Maximum envelope",
                                        "<Parameter Name='Size' Type='5001'><Operator>1</Operator>"
                                        "<ParameterType>0</ParameterType><Value>250</Value>"
                                        "<Value>200</Value><Value>150</Value></Parameter>")));
    const auto value = [](const std::string& key, const std::string& number) {
        return "<Parameter " + key + "><Value>" + number + "</Value></Parameter>";
    };
    const struct {
        std::string rules;
        const char* told;
    } cases[] = {
        {"<Rule Name='Ours'>" + value("Name='LIMIT'", "2") + "</Rule>",
         "Ours +General +major +failed +limit 2.0"},
        {"<Rule Name='Ours' Severity='1'>" + value("Type=' 01'", "+3") + "</Rule>",
         "Ours +General +critical +failed +limit 3.0"},
        {"<Rule Name='maximum envelope'>" + value("Type='5001'", "10") + "</Rule>",
         "\nMaximum envelope +Milling +major +error +.*part.brep: line 1"},
        {"<Rule Name='Maximum envelope'>" + value("Name='sise'", "10") + "</Rule>",
         "has no parameter \"sise\"; it has Size .5001."},
    };
    for (const auto& [rules, told] : cases) {
        SCOPED_TRACE(rules);
        const ProcessResult result = run("<Include File='shop.xml'/>" + rules);
        EXPECT_THAT(result.out + result.err, ContainsRegex(told));
        EXPECT_THAT(corvane("lint", {"@site.xml"}).out, Not(HasSubstr("L501")));
    }
    run("<Include File='shop.xml'/><Rule Name='maximum envelope'><Parameter Name='size'>"
        "<Value>11</Value><Value>12</Value><Value>13</Value></Parameter></Rule>");
    EXPECT_THAT(corvane("show", {"@site.xml"}).out, HasSubstr("(number) = 11, 12, 13\n"));
}

TEST_F(Include, AFileIsReadOnceHoweverOftenItIsIncluded) {
    for (int i = 0; i < 15; ++i) {
        std::string includes;
        for (int k = 0; k < 9; ++k)
            includes += "<Include File='" + std::string(k % 2 ? "./" : "") + "f" +
                        std::to_string(i + 1) + ".xml'/>";
        corvane.folder.write("f" + std::to_string(i) + ".xml", ruleFile(includes));
    }
    corvane.folder.write("f15.xml", ruleFile(scriptRule("Ours", "own.lua")));
    const ProcessResult result = corvane("run", {"@f0.xml", "--format", "json"});
    const auto rules = nlohmann::json::parse(result.out)["parts"][0]["rules"];
    ASSERT_EQ(rules.size(), 1);
    EXPECT_EQ(rules[0]["components"].size(), 16) << "the script and each included file";
}

TEST_F(Include, AResultOfTheCacheNamesThePlaceWhereALimitIsChangedNow) {
    const std::string rule =
        "<Rule Name='FDM build volume'><Parameter Name='length'><Value>202</Value></Parameter>"
        "</Rule>";
    for (const char* lines : {"", "\n\n"}) {
        run(std::string("<Include Set='fdm'/>") + lines + rule,
            {"--rule", "FDM build*", "--cache", corvane.folder.path("cache"), "--output",
             "json=" + corvane.folder.path("out.json")});
        const auto results = nlohmann::json::parse(corvane.folder.read("out.json"));
        EXPECT_THAT(results["parts"][0]["rules"][0].value("source", ""),
                    testing::EndsWith("site.xml:" + std::to_string(2 + std::string(lines).size())));
    }
}

TEST_F(Include, WhatCannotBeIncludedIsToldWithItsPlace) {
    const struct {
        const char* rules;
        const char* told;
    } cases[] = {
        {"<Include Set='knitting'/>", "site.xml:2: .*no rule set \"knitting\""},
        {"<Include File='none.xml'/>", "site.xml:2: .*none.xml"},
        {"<Include File='site.xml'/>", "include each other"},
        {"<Include/>", "site.xml:2: an <Include> has a Set or a File"},
        {"<Include Set='fdm'/>\n<Exclude Name='x'/>", "site.xml:3: no included rule is called"},
        {"<Include Set='fdm'/>\n<Rule Name='FDM hol'/>", "site.xml:3: no included rule is called"},
        {"<Include Set='fdm'/><Rule Name='FDM hole' Severity='minor'/>", "\"minor\" is no number"},
        {"<Include Set='fdm'/><Rule Name='FDM hole' Severity='1.5'/>", "\"1.5\" is no number"},
        {"<Include Set='fdm'/><Rule Name='FDM hole'><Parameter Name='limit'><Value>nan</Value>"
         "</Parameter></Rule>",
         "\"nan\" of the parameter"},
        {"<Include Set='fdm'/><Rule Name='FDM hole'>\n<Parameter Name='limt'><Value>1</Value>"
         "</Parameter></Rule>",
         "site.xml:3: the rule \"FDM hole\" has no parameter \"limt\"; it has limit .1."},
        {"<Include Set='fdm'/><Rule Name='FDM hole'><Parameter Type='7'><Value>1</Value>"
         "</Parameter></Rule>",
         "has no parameter \"7\""},
        {"<Include Set='fdm'/><Rule Name='FDM hole'><Parameter Name='x' Type='1'><Value>1</Value>"
         "</Parameter></Rule>",
         "is called \"limit\", not \"x\""},
        {"<Include Set='fdm'/><Rule Name='FDM hole'><Constraint Type='Material' Value='PLA'>"
         "<Parameter Name='limit'><Value>1,5</Value></Parameter></Constraint></Rule>",
         "\"1,5\" of the parameter \"limit\" is no number"},
        {"<Include Set='fdm'/><Rule Name='Closed solid'><Parameter Name='x'/></Rule>",
         "has no parameters"},
    };
    for (const auto& [rules, told] : cases) {
        SCOPED_TRACE(rules);
        const ProcessResult result = run(rules);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, ContainsRegex(told));
        EXPECT_EQ(corvane("lint", {"@site.xml"}).status, 1);
    }
    run("<Include Set='fdm'/>\n<Exclude Name='x'/>");
    EXPECT_THAT(corvane("lint", {"@site.xml"}).out,
                ContainsRegex("site.xml:3:1: error: no included"));
}

TEST_F(Include, CheckSaysWhatItNeeds) {
    EXPECT_THAT(corvane("check", {"@part.brep"}).err, HasSubstr("--process"));
    EXPECT_THAT(corvane("check", {"@part.brep", "--process", "knitting"}).err,
                AllOf(HasSubstr("knitting"), HasSubstr("injection-moulding")));
    EXPECT_THAT(corvane("check", {"--process", "fdm"}).err, HasSubstr("no part"));
    EXPECT_THAT(corvane("check", {"--list"}).out, ContainsRegex("sheet-metal +[0-9]+ +parts"));
    EXPECT_EQ(corvane("check", {"@none.step", "--process", "fdm"}).status, 2);
}

TEST_F(Include, CheckRunsARuleOfSeveralProcessesOnce) {
    const ProcessResult result =
        corvane("check", {"@part.brep", "--process", "fdm", "--process", "sls", "--rule",
                          "Closed solid", "--rule", "*build volume"});
    EXPECT_THAT(result.out, AllOf(HasSubstr("FDM build volume"), HasSubstr("SLS build volume"),
                                  HasSubstr("\n3 rules:")));
    EXPECT_THAT(result.out, HasSubstr("Closed solid"));
}

}  // namespace
