#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include <corvane/rules/ChildElements.h>
#include <corvane/xml/QorXMLDocument.h>

#include "Figures.h"
#include "Making.h"
#include "cli/Process.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kRules = CORVANE_BUILD_DIR "/share/corvane/rules";

std::string attribute(const QorXMLNode& element, const char16_t* name) {
    CStringW text;
    element.GetAttributeValue(name, text);
    return text.ToUtf8();
}

std::vector<std::string> rulesOf(const fs::path& file) {
    std::vector<std::string> names;
    QorXMLDocument document;
    const QorXMLNode* root = document.LoadFromFile(CStringW(file.u16string()));
    if (!root) return names;
    for (const QorXMLNode& rule : corvane::ChildElements(*root, u"Rule"))
        names.push_back(attribute(rule, u"Name"));
    return names;
}

/// A page without its line breaks.
std::string wordsOf(const fs::path& page) {
    std::ifstream file(page);
    std::string text, word;
    while (file >> word)
        text += word + " ";
    return text;
}

/// An environment in which nothing is set up.
class ShippedRules : public testing::Test {
protected:
    static std::string fileOf(std::size_t number, bool isGood) {
        return std::to_string(number) + (isGood ? "-good.brep" : "-bad.brep");
    }

    /// Verdict and reason of each rule on each part of a set's folder.
    std::map<std::string, std::map<std::string, json>> check(
        const std::string& set, const std::vector<std::string>& options = {}) {
        std::vector<std::string> command{CORVANE_BUILD_DIR "/bin/corvane",
                                         "check",
                                         folder_.path(set),
                                         "--process",
                                         set,
                                         "--format",
                                         "json",
                                         "--batch"};
        command.insert(command.end(), options.begin(), options.end());
        const ProcessResult run = runProcess(command);
        EXPECT_THAT(run.err, testing::IsEmpty());
        std::map<std::string, std::map<std::string, json>> results;
        const json document = json::parse(run.out, nullptr, false);
        if (!document.is_object()) return results;
        for (const json& part : document.at("parts"))
            for (const json& rule : part.at("rules"))
                results[fs::path(part.at("path").get<std::string>()).filename().string()]
                       [rule.at("name").get<std::string>()] = rule;
        return results;
    }

    TemporaryFolder folder_;

private:
    EnvironmentScope data_{"CORVANE_DATA_DIR", folder_.path("none")};
    EnvironmentScope registry_{"CORVANE_REGISTRY_DIR", nullptr};
    EnvironmentScope database_{"CORVANE_DATABASE_DIR", (folder_.path() + "/")};
    EnvironmentScope configuration_{"XDG_CONFIG_HOME", folder_.path("none")};
    EnvironmentScope part_{"CORVANE_PART", nullptr};
};

TEST_F(ShippedRules, PassOnPartsThatKeepThemAndFailOnPartsThatBreakThem) {
    const std::vector<figures::Case> cases = figures::cases();
    std::set<std::string> sets;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        fs::create_directories(folder_.path(cases[i].set));
        for (const bool isGood : {true, false})
            shapes::write((isGood ? cases[i].good : cases[i].bad)(),
                          fs::path(folder_.path(cases[i].set)) / fileOf(i, isGood));
        sets.insert(cases[i].set);
    }
    for (const std::string& set : sets) {
        auto results = check(set);
        for (std::size_t i = 0; i < cases.size(); ++i) {
            if (cases[i].set != set) continue;
            for (const bool isGood : {true, false}) {
                const json& rule = results[fileOf(i, isGood)][cases[i].rule];
                SCOPED_TRACE(set + ", " + cases[i].rule + ": " + rule.dump());
                ASSERT_TRUE(rule.is_object());
                EXPECT_EQ(rule.at("verdict"), isGood ? "passed" : "failed");
                EXPECT_FALSE(rule.contains("reasons"));
                EXPECT_TRUE(rule.contains("why") && rule.contains("how"));
                if (isGood || !rule.contains("findings")) continue;
                EXPECT_TRUE(rule.at("findings").at(0).contains("places"));
            }
        }
    }
}

TEST_F(ShippedRules, ThreadsThatTheFileNamesTakeThePlaceOfThoseByDiameter) {
    fs::create_directories(folder_.path("drilling"));
    const std::string file = folder_.path("drilling/named.step");
    shapes::write(figures::plate(8, {figures::drill(20, 20, 8, 5, 8),       // through, 1.3 x M6
                                     figures::drill(40, 40, 8, 1.25, 5)}),  // as if for M1.6
                  file);
    const auto failed = [&] {
        std::set<std::string> names;
        auto results = check("drilling");
        for (const char* const rule : {"Tapped depth", "Smallest thread"})
            if (results["named.step"][rule].at("verdict") == "failed") names.insert(rule);
        return names;
    };
    EXPECT_EQ(failed(), std::set<std::string>{"Smallest thread"});
    shapes::nameCylinder(file, 2.5, "M6x1");
    EXPECT_EQ(failed(), std::set<std::string>{"Tapped depth"});
}

TEST_F(ShippedRules, ASizeThatCannotBeIsAnErrorUnlessSomebodyNamesTheUnit) {
    fs::create_directories(folder_.path("turning"));
    shapes::write(shapes::cylinder({{0, 0, 0}, {0, 0, 1}}, 0.005, 0.04),
                  folder_.path("turning/pin.brep"));
    const std::string sizes = "the part is 0.01 x 0.01 x 0.04 mm large";
    auto assumed = check("turning")["pin.brep"];
    EXPECT_EQ(assumed["Closed solid"].at("verdict"), "failed");
    EXPECT_EQ(assumed["Turned shape"].at("verdict"), "error");
    EXPECT_THAT(assumed["Turned shape"].at("reasons").at(0).get<std::string>(),
                testing::AllOf(testing::HasSubstr(sizes), testing::HasSubstr("--units")));
    auto named = check("turning", {"--units", "mm"})["pin.brep"];
    EXPECT_EQ(named["Turned shape"].at("verdict"), "passed");
    EXPECT_EQ(named["Closed solid"].at("verdict"), "passed");
    const json& note = named["Closed solid"].at("findings").at(0);
    EXPECT_EQ(note.at("note"), true);
    EXPECT_THAT(note.at("message").get<std::string>(), testing::StartsWith(sizes));
}

TEST_F(ShippedRules, LimitsFollowTheMaterial) {
    const auto ribbed = [] {  // with a wall of 1.2 mm
        return figures::plate(
            20, {shapes::box(20, 60, 12, {5, 0, 8}), shapes::box(20, 60, 12, {26.2, 0, 8})});
    };
    const auto sheet = [](double thickness, double radius) {
        return [=] { return figures::bent({thickness, radius}); };
    };
    const struct {
        const char *set, *rule, *material, *verdict;
        figures::Make make;
    } cases[] = {
        {"milling", "Thin machined wall", "C45", "passed", ribbed},
        {"milling", "Thin machined wall", "POM", "failed", ribbed},
        {"sheet-metal", "Bend radius", "C45", "passed", sheet(2, 2)},
        {"sheet-metal", "Bend radius", "EN AW-6082 T6", "failed", sheet(2, 2)},
        {"sheet-metal", "Bend radius", "S355MC", "passed", sheet(3, 0.8)},
        {"sheet-metal", "Bend radius", "EN AW-6082 T6", "error", sheet(7, 8)},
        {"sheet-metal", "Bend radius", "S235JR", "passed", sheet(0.8, 0.8)},
    };
    for (const auto& [set, rule, material, verdict, make] : cases) {
        SCOPED_TRACE(std::string(rule) + " for " + material);
        fs::create_directories(folder_.path(set));
        shapes::write(make(), folder_.path(set) + "/part.brep");
        const auto results = check(set, {"--material", material, "--rule", rule});
        EXPECT_EQ(results.at("part.brep").at(rule).at("verdict"), verdict);
    }
}

TEST_F(ShippedRules, EachHasASourceAHelpPageAScriptAndATest) {
    std::set<std::string> tested, listed;
    for (const figures::Case& one : figures::cases())
        tested.insert(one.rule);
    QorXMLDocument index;
    const fs::path scripts = kRules / "scripts";
    const auto* root = index.LoadFromFile(CStringW((scripts / "UserDefinedFile.xml").u16string()));
    ASSERT_TRUE(root);
    std::set<std::string> defined;
    for (const QorXMLNode& rule : corvane::ChildElements(*root, u"Rule")) {
        const std::string name = attribute(rule, u"Name");
        SCOPED_TRACE(name);
        EXPECT_TRUE(defined.insert(name).second);
        EXPECT_THAT(attribute(rule, u"Source"), testing::Not(testing::IsEmpty()));
        EXPECT_THAT(wordsOf(kRules / attribute(rule, u"Module")),
                    testing::HasSubstr("Source: " + attribute(rule, u"Source") + "."));
        EXPECT_TRUE(fs::is_regular_file(scripts / attribute(rule, u"File")));
    }
    for (const auto& entry : fs::directory_iterator(kRules))
        if (entry.path().extension() == ".xml")
            for (const std::string& name : rulesOf(entry.path()))
                listed.insert(name);
    EXPECT_EQ(defined, listed);
    EXPECT_EQ(defined, tested);
}

TEST_F(ShippedRules, TheExamplePlateBreaksMostOfTheRulesOfMilling) {
    fs::create_directories(folder_.path("milling"));
    fs::copy(CORVANE_TEST_DATA "/../examples/solids/plate.step", folder_.path("milling"));
    auto results = check("milling");
    std::map<std::string, int> verdicts;
    for (const auto& [name, rule] : results["plate.step"])
        ++verdicts[rule.at("verdict")];
    EXPECT_EQ(verdicts, (std::map<std::string, int>{{"failed", 19}, {"passed", 7}}));
}

TEST_F(ShippedRules, LintFindsNothing) {
    std::vector<std::string> command{CORVANE_BUILD_DIR "/bin/corvane", "lint",
                                     (kRules / "scripts/UserDefinedFile.xml").string()};
    for (const auto& entry : fs::directory_iterator(kRules))
        if (entry.path().extension() == ".xml") command.push_back(entry.path().string());
    const ProcessResult run = runProcess(command);
    EXPECT_EQ(run.status, 0) << run.out << run.err;
}

}  // namespace
