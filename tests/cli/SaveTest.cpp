#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

TEST(Save, WrittenRulesGiveTheSameResultsAndAreTheSameWhenWrittenAgain) {
    const CommandLine corvane;
    const std::string examples = CORVANE_TEST_DATA "/../examples/";
    const EnvironmentScope data("CORVANE_DATA_DIR", CORVANE_BUILD_DIR "/examples/data");
    const EnvironmentScope part("CORVANE_PART", CommandLine::part("bracket"));
    for (const char* name : {"compiled", "scripts"}) {
        const std::string source = examples + "rules/" + name + ".xml";
        EXPECT_EQ(corvane("save", {source, "@first.xml"}).status, 0);
        EXPECT_EQ(corvane("save", {"@first.xml", "@second.xml"}).status, 0);
        EXPECT_EQ(corvane.folder.read("first.xml"), corvane.folder.read("second.xml"));
        const ProcessResult before = corvane("run", {source});
        EXPECT_EQ(before.status, 1);
        EXPECT_EQ(corvane("run", {"@first.xml"}).out, before.out);
    }
}

TEST(Save, NothingIsLostSilently) {
    const CommandLine corvane;
    const std::string kept = moduleRule("Gone", parameter(1, "<Value>x</Value>"), "none.dll");
    const std::string lost = moduleRule("Minimum wall", "<Parameter Type='5011'/><Paramter/>");
    corvane.folder.write("rules.xml",
                         ruleFile(scriptRule("r", "a.lua", kMeshEngine) + kept + lost));
    corvane.folder.write("registry/user.reg", "");
    const ProcessResult result = corvane("save", {"@rules.xml", "@out.xml"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err,
                AllOf(ContainsRegex("rules.xml:2: the engine .* is not registered"),
                      ContainsRegex("rules.xml:2: there is no rule module \"none.dll\""),
                      HasSubstr("rules.xml:2: parameter 5011: left out, since without an Operator"),
                      HasSubstr("rules.xml:2: the element <Paramter> is left out")));
    EXPECT_THAT(corvane.folder.read("out.xml"),
                AllOf(HasSubstr("<RuleFile>"), HasSubstr("Name=\"Gone\""),
                      HasSubstr("<Value>x</Value>"), HasSubstr("File=\"a.lua\"")));
}

}  // namespace
