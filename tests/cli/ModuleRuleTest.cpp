#include <filesystem>
#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

std::string values(std::initializer_list<const char*> texts) {
    std::string all;
    for (const char* text : texts)
        all += std::string("<Value>") + text + "</Value>";
    return all;
}

std::string size(const char* x, const char* y, const char* z, const char* turned) {
    return parameter(5001, values({x, y, z})) + parameter(5002, values({turned}));
}

std::string wall(const char* material, const char* status) {
    return parameter(5011, values({"1"})) + parameter(5012, values({material})) +
           "<Constraint Type='Material' Value='ABS' Status='" + status + "'>" +
           parameter(5011, values({"1.5"})) + "</Constraint>";
}

std::string mass(const char* limit, const char* material) {
    return parameter(5021, values({limit})) + parameter(5012, values({material})) +
           parameter(5022, "<Value Attribute1='ABS' Attribute2='1.05'/><Value/>", 24);
}

// The bracket is 40 x 30 x 20 mm, 3048 mm3, with a wall of 1.2 mm.
TEST(ModuleRules, TheExampleRulesMeasureThePart) {
    const CommandLine corvane;
    const struct {
        std::string rule;
        const char* part;
        const char* told;
        int status;
    } cases[] = {
        {moduleRule("Maximum envelope", size("40", "30", "20", "0")), "bracket", "major +passed\n",
         0},
        {moduleRule("Maximum envelope", size("20", "40", "30", "0")), "bracket",
         "failed +the part measures 40.0 x 30.0 x 20.0 mm, the machine takes 20.0 x 40.0 x 30.0",
         1},
        {moduleRule("Maximum envelope", size("20", "40", "30", "1")), "bracket", "major +passed\n",
         0},
        {moduleRule("Maximum envelope", size("20", "39.9", "30", "1")), "bracket", "failed", 1},
        {moduleRule("Maximum envelope"), "bracket", "the rule needs a largest size", 3},
        {moduleRule("Minimum wall", wall("abs", "1")), "bracket", "about 1.20 mm, abs needs 1.50",
         1},
        {moduleRule("Minimum wall", wall("ABS", "0")), "bracket", "major +passed\n", 0},
        {moduleRule("Minimum wall", wall("PA12", "1")), "bracket", "major +passed\n", 0},
        {moduleRule("Minimum wall", parameter(5011, values({"1.3"})) +
                                        parameter(5012, values({"PC"})) +
                                        "<Constraint Type='Material' Value='PC' Status='1'/>"),
         "bracket", "about 1.20 mm, PC needs 1.30", 1},
        {moduleRule("Maximum mass", mass("3.21", "ABS")), "bracket", "major +passed\n", 0},
        {moduleRule("Maximum mass", mass("3.19", "ABS")), "bracket", "weighs 3.2 g, 3.2 g are", 1},
        {moduleRule("Maximum mass", mass("9", "lead")), "bracket", "no density of \"lead\"", 3},
        {moduleRule("Maximum mass", mass("99", "ABS")), "broken_cover", "encloses no volume", 1},
    };
    for (const auto& [rule, part, told, status] : cases) {
        SCOPED_TRACE(told);
        corvane.folder.write("rules.xml", ruleFile(rule));
        const ProcessResult result =
            corvane("run", {"@rules.xml", "--part", CommandLine::part(part)});
        EXPECT_EQ(result.status, status);
        EXPECT_THAT(result.out, ContainsRegex(told));
    }
}

TEST(ModuleRules, APartThatCannotBeMeasuredIsAnError) {
    const CommandLine corvane;
    corvane.folder.write("rules.xml", ruleFile(moduleRule("Minimum wall")));
    EXPECT_THAT(corvane("run", {"@rules.xml"}).out, ContainsRegex("no part is open\n"));
    corvane.folder.write("flat.stl",
                         "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                         "vertex 0 1 0\nendloop\nendfacet\nendsolid a\n");
    EXPECT_THAT(corvane("run", {"@rules.xml", "--part", "@flat.stl"}).out,
                ContainsRegex("the part has no wall to measure\n"));
    corvane.folder.write("part.stl", "solid a\nfacet normal 0 0 1\nouter hoop");
    const ProcessResult result = corvane("run", {"@rules.xml", "--part", "@part.stl"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, ContainsRegex("part.stl: line 3: expected \"loop\", found \"hoop\""));
}

TEST(ModuleRules, OnlyModulesOfTheModuleFoldersAreLoaded) {
    const CommandLine corvane;
    const std::string module = CORVANE_BUILD_DIR "/lib/rules/partrules.so";
    std::filesystem::create_directories(corvane.folder.path("mine"));
    std::filesystem::copy(module, corvane.folder.path("mine/Own.so"));
    std::filesystem::copy(module, corvane.folder.path("stray.so"));
    std::filesystem::copy(CORVANE_BUILD_DIR "/examples/engines/mesh.so",
                          corvane.folder.path("mine/mesh.so"));
    std::filesystem::copy(CORVANE_BUILD_DIR "/lib/libRuleModuleProbe.so",
                          corvane.folder.path("mine/stale.so"));
    corvane.folder.write("mine/text.so", "no module");
    const struct {
        std::string name;
        std::string file;
        const char* told;
    } cases[] = {
        {"Maximum mass", "own.DLL", "Maximum mass"},
        {"Maximum mass", "C:\\Rules\\own.dll", "Maximum mass"},
        {"Maximum mass", corvane.folder.path("stray.so"), "no rule module \"stray.so\" in "},
        {"Maximum mass", "../stray.so", "no rule module \"stray.so\" in "},
        {"Maximum mass", "libxml2.so", "no rule module \"libxml2.so\" in "},
        {"Maximum mass", "text.so", "module \"text.so\" cannot be loaded: "},
        {"Maximum mass", ".dll", "no rule module"},
        {"Maximum mass", "mesh.dll", "is no rule module: it does not export CreateQorRule"},
        {"Maximum mass", "stale.dll", "built for another version of the library: build it again"},
        {"Maximum joy", "own.dll", "has no rule \"Maximum joy\""},
    };
    for (const auto& [name, file, told] : cases) {
        SCOPED_TRACE(file);
        corvane.folder.write("rules.xml", ruleFile(moduleRule(name, "", file)));
        const ProcessResult show = corvane("show", {"@rules.xml", "--modules", "@mine"});
        EXPECT_THAT(show.out, HasSubstr(told));
        EXPECT_EQ(show.status, show.out.find("problem") == std::string::npos ? 0 : 1);
        EXPECT_EQ(show.status, told == name ? 0 : 1);
        // A rule that cannot be made keeps its place in the table.
        const ProcessResult run = corvane("run", {"@rules.xml", "--modules", "@mine"});
        EXPECT_EQ(run.status, 3) << "there is no part";
        EXPECT_THAT(run.out, ContainsRegex(name + " +Milling +major +error +.+"));
    }
}

TEST(ModuleRules, ShowTellsParametersAndConstraintsWithTheirValues) {
    const CommandLine corvane;
    corvane.folder.write("rules.xml",
                         ruleFile(moduleRule("Minimum wall", wall("ABS", "0")) +
                                  moduleRule("Maximum mass", mass("9", "")) +
                                  moduleRule("Maximum envelope", size("1", "2", "3", "1"))));
    const ProcessResult result = corvane("show", {"@rules.xml"});
    EXPECT_EQ(result.status, 0);
    for (const char* line :
         {"definition +rule module\n", "category +Milling\n",
          "severity +2, status 0, life status 0\n",
          "parameter +5011 Thinnest wall .mm. .number. = 1\n", "constraint +material ABS .off.\n",
          "parameter +  5011 Thinnest wall .mm. .number. = 1.5\n",
          "5022 Densities .g/cm3. .record. = ABS . 1.05, \n", "5001 .* .number. = 1, 2, 3\n",
          "5002 The part may be turned .yes or no. = yes\n"})
        EXPECT_THAT(result.out, ContainsRegex(line));
}

}  // namespace
