#include <gtest/gtest.h>

#include <corvane/config/DataFolders.h>
#include <corvane/config/ModuleConfiguration.h>
#include <corvane/platform/SteadyFilesScope.h>

#include "config/DataFolders.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"
#include "support/Text.h"

namespace {

TEST(DataFolders, MakesTheSettingsFolderBelowTheOneThatTheEnvironmentNames) {
    const TemporaryFolder folder;
    const EnvironmentScope data("CORVANE_DATA_DIR", folder.path("new/data"));
    const CStringW expected = folder.wide("new/data/Settings/");
    std::u16string buffer(expected.View().size() + 1, u'x');
    const QorLong length = expected.GetLength();
    const QorLong enough = length + 1;
    EXPECT_EQ(GetDataSettingsFolderPath(buffer.data(), &length), length);
    EXPECT_EQ(buffer, std::u16string(buffer.size(), u'x'));
    EXPECT_TRUE(folder.exists("new/data/Settings"));
    EXPECT_EQ(GetDataSettingsFolderPath(nullptr, &enough), length);
    EXPECT_EQ(GetDataSettingsFolderPath(buffer.data(), nullptr), length);
    EXPECT_EQ(GetDataSettingsFolderPath(buffer.data(), &enough), length);
    EXPECT_EQ(CStringW(buffer.c_str()), expected);
}

TEST(DataFolders, HandsOutALongPathWholeAndOneThatCannotBeMade) {
    const std::string deep = "/dev/null/" + std::string(300, 'd');
    const EnvironmentScope data("CORVANE_DATA_DIR", deep);
    EXPECT_EQ(FrameworkUtils().GetConfigModuleFile(),
              CStringW::FromUtf8(deep + "/Settings/ConfigModule.ini"));
}

TEST(DataFolders, TakesTheScriptFolderFromTheConfiguration) {
    struct Case {
        const char* text;
        std::optional<CStringW> folder;
    };
    const Case cases[] = {
        {"[RULE_SCRIPT_LOCATION]\r\ndirectory=/srv/r\xC3\xA8gles\r\n", u"/srv/r\u00E8gles"},
        {"[RULE_SCRIPT_LOCATION]\ndirectory=\n", u""},
        {"[RULE_SCRIPT_LOCATION]\ndirectory=a[b\n", u"a[b"},
        {"[RULE_SCRIPT_LOCATION]\ndirectory=\xFFz\n", u"\uFFFDz"},
        {"[RULE_SCRIPT_LOCATION]\ndirectory=/srv", std::nullopt},
        {"[RULE_SCRIPT_LOCATION]\ndirectory = /srv\n", std::nullopt},
        {"[RULE_SCRIPT_LOCATION]\nDirectory=/srv\n", std::nullopt},
        {"[rule_script_location]\ndirectory=/srv\n", std::nullopt},
    };
    const TemporaryFolder folder;
    const EnvironmentScope data("CORVANE_DATA_DIR", folder.path());
    EXPECT_EQ(corvane::config::scriptFolder(), std::nullopt);
    for (const Case& test : cases) {
        folder.write("Settings/ConfigModule.ini", test.text);
        EXPECT_EQ(corvane::config::scriptFolder(), test.folder) << test.text;
    }
}

TEST(DataFolders, SeesTheScriptFolderThatTheConfigurationNamesNow) {
    const TemporaryFolder folder;
    const EnvironmentScope data("CORVANE_DATA_DIR", folder.path());
    const auto write = [&folder](const char* name, const std::string& directory) {
        folder.write(name, "[RULE_SCRIPT_LOCATION]\ndirectory=" + directory + "\n");
    };
    // As large as before and within one tick of the file system's clock.
    for (const char* directory : {"/a", "/b", "/c"}) {
        write("Settings/ConfigModule.ini", directory);
        EXPECT_EQ(corvane::config::scriptFolder(), CStringW::FromUtf8(directory));
    }
    write("other/Settings/ConfigModule.ini", "/d");
    {
        const EnvironmentScope other("CORVANE_DATA_DIR", folder.path("other"));
        EXPECT_EQ(corvane::config::scriptFolder(), u"/d");
    }
    EXPECT_EQ(corvane::config::scriptFolder(), u"/c");
    std::filesystem::remove_all(folder.path("Settings"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(corvane::config::scriptFolder(), std::nullopt);
        EXPECT_TRUE(folder.exists("Settings"));
        std::filesystem::remove_all(folder.path("Settings"));
    }
    write("Settings/ConfigModule.ini", "/e");
    EXPECT_EQ(corvane::config::scriptFolder(), u"/e");
    {
        const corvane::SteadyFilesScope steady;
        write("Settings/ConfigModule.ini", "/f");
        EXPECT_EQ(corvane::GetScriptFolder(), u"/f");
        write("Settings/ConfigModule.ini", "/g and more");
        const corvane::SteadyFilesScope inner;
        EXPECT_EQ(corvane::GetScriptFolder(), u"/f");
    }
    EXPECT_EQ(corvane::GetScriptFolder(), u"/g and more");
}

}  // namespace
