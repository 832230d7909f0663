#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <corvane/app/BatchMode.h>
#include <corvane/app/StringResources.h>

#include "app/CCorvaneFrameworkApp.h"
#include "app/Language.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"
#include "support/Text.h"
#include "system/Modules.h"

namespace {

using corvane::FindTableText;
using corvane::ResourceText;
using corvane::StringTableEntry;
using corvane::app::currentStringTable;
namespace resource = corvane::resource;

// The application object of a library that was loaded for a user of that language.
struct StartedApp : CCorvaneFrameworkApp {
    explicit StartedApp(const char16_t* language) {
        m_strLanguage = language;
        EXPECT_TRUE(InitInstance());
    }
    ~StartedApp() override { EXPECT_EQ(StartedApp::ExitInstance(), 0); }
};

TEST(FrameworkApp, TakesAllTextsFromTheModuleOfTheLanguageOrTheEnglishOne) {
    struct Case {
        const char16_t* language;
        const char16_t* folder;
        const char16_t* newRule;
    };
    const Case cases[] = {
        {u"english", u"english", u"New rule"},       {u"german", u"english", u"New rule"},
        {u"chinese", u"english", u"New rule"},       {u"klingon", u"english", u"New rule"},
        {u"french", u"french", u"Nouvelle règle"},   {u"korean", u"korean", u"새 규칙"},
        {u"japanese", u"japanese", u"新しいルール"},
    };
    for (const Case& test : cases) {
        const StartedApp app(test.language);
        EXPECT_EQ(CStringW(ResourceText(resource::kNewRuleName)), test.newRule);
        EXPECT_EQ(CStringW(ResourceText(resource::kRuleNode)), u"Rule");
        EXPECT_EQ(app.GetEnglishString(resource::kNewRuleName), u"New rule");
        EXPECT_EQ(app.m_strLanguage, test.language);
        EXPECT_EQ(app.m_strLanguageFolder,
                  CStringW::FromUtf8(CORVANE_BUILD_DIR "/Lang/") + test.folder);
    }
    EXPECT_EQ(CStringW(ResourceText(resource::kNewRuleName)), u"");
}

// What a copy of the library says, in an installed tree that has only some of the modules.
std::string newRuleIn(const TemporaryFolder& tree, const std::vector<std::string>& languages) {
    namespace fs = std::filesystem;
    const fs::path build = CORVANE_BUILD_DIR;
    fs::create_directories(tree.path("lib"));
    fs::copy(fs::canonical(build / "lib/libCorvaneFrameworku.so"), tree.path("lib/Copy.so"));
    for (const std::string& language : languages) {
        fs::create_directories(tree.path("Lang"));
        fs::copy(build / "Lang" / language, tree.path("Lang/" + language));
    }
    // Never freed: what the library keeps for the life of the process would count as leaked.
    const corvane::system::ModuleHandle library =
        corvane::system::loadModule(tree.wide("lib/Copy.so"));
    const auto text = corvane::system::moduleFunction<decltype(&ResourceText)>(
        library, "_ZN7corvane12ResourceTextEj");
    return text ? CStringW(text(resource::kNewRuleName)).ToUtf8() : "not loaded";
}

TEST(FrameworkApp, StartsWithTheLibraryWhateverModulesThereAre) {
    const TemporaryFolder complete, without, damaged, empty;
    const EnvironmentScope registry("CORVANE_REGISTRY_DIR", empty.path());
    const EnvironmentScope locale("LC_ALL", "ko_KR.UTF-8");
    EXPECT_EQ(newRuleIn(complete, {"english", "korean"}), "새 규칙");
    EXPECT_EQ(newRuleIn(without, {"english", "french"}), "New rule");
    damaged.write("Lang/korean/CorvaneFrameworkResu.so", "no module");
    EXPECT_EQ(newRuleIn(damaged, {"english"}), "New rule");
    EXPECT_EQ(newRuleIn(empty, {}), "");
}

TEST(StringTables, AnswerByNumberAndForOneThread) {
    const StartedApp app(u"english");
    const StringTableEntry entries[] = {{1, u"one"}, {7, u""}, {5012, u"wall"}, {0xFFFFFFFF, u"x"}};
    const corvane::StringTable table{entries, std::size(entries)};
    for (const StringTableEntry& entry : entries)
        EXPECT_EQ(FindTableText(&table, entry.number), entry.text);
    for (const std::uint32_t number : {0U, 2U, 5011U, 5013U})
        EXPECT_TRUE(FindTableText(&table, number).empty());
    EXPECT_TRUE(FindTableText(nullptr, 1).empty());
    const corvane::StringTableScope outer(table);
    {
        const corvane::StringTableScope inner(*app.strings());
        EXPECT_EQ(currentStringTable(), app.strings());
    }
    EXPECT_EQ(currentStringTable(), &table);
    std::thread([&] { EXPECT_EQ(currentStringTable(), app.strings()); }).join();
    EXPECT_EQ(corvane::SetCurrentStringTable(nullptr), &table);
    EXPECT_EQ(currentStringTable(), app.strings());
}

TEST(BatchMode, IsOffUntilItIsSet) {
    bool status = true;
    GetBatchModeStatus(&status);
    EXPECT_FALSE(status);
    SetBatchModeStatus(true);
    GetBatchModeStatus(&status);
    EXPECT_TRUE(status);
    SetBatchModeStatus(false);
}

}  // namespace
