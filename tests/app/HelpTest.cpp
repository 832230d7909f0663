#include <filesystem>
#include <gtest/gtest.h>

#include <corvane/app/Help.h>

#include "app/CCorvaneFrameworkApp.h"
#include "frontend/HelpFiles.h"
#include "support/EnvironmentScope.h"
#include "support/Programs.h"
#include "support/Text.h"
#include "system/Modules.h"

namespace {

TEST(HelpFiles, GiveTheFirstLineWithTheNumberOrNameAndLoseItsText) {
    struct Case {
        const char* text;
        QorLong topic;  // 0: the page of IDH_WALL is looked for
        const char16_t* found;
    };
    const Case cases[] = {
        {"#define IDH_WALL 12", 12, u"IDH_WALL"},
        {"\xEF\xBB\xBF#define\tIDH_WALL\t12\r\n", 12, u"IDH_WALL"},
        {"#define IDH_LONG 1234\n#define IDH_WALL 12\n", 12, u"IDH_LONG 34"},
        {"\n#define IDH_12_WALL12 12 // \u00E9\n", 12, u"IDH__WALL  // \u00E9"},
        {"#define IDH_MINUS -5\n", -5, u"IDH_MINUS"},
        {"#define 7\n", 7, u""},
        {"#define IDH_WALL 12\n", 3, nullptr},
        {"; IDH\nIDH_WALL = my wall.htm \t\r\nIDH_WALL=b", 0, u"my wall.htm"},
        {"IDH_WALLS=a.htm\nIDH_WALL=b.htm", 0, u"Sa.htm"},
        {"IDH_WALL=IDH_WALL.htm?a=b", 0, u".htm?ab"},
        {"", 0, nullptr},
    };
    const TemporaryFolder folder;
    const CCorvaneFrameworkApp app;
    for (const auto& [text, topic, expected] : cases) {
        CStringW found = u"former";
        folder.write("file", text);
        const int result = topic != 0
                               ? app.FindHelpIDInString(folder.wide("file"), topic, found)
                               : app.FindHelpHtmFileName(folder.wide("file"), u"IDH_WALL", found);
        EXPECT_EQ(result, expected ? 1 : 0) << text;
        EXPECT_EQ(found, expected) << text;
    }
}

TEST(HelpFiles, ThatCannotBeReadAreToldToWhoeverDebugs) {
    const TemporaryFolder folder;
    const EnvironmentScope debug("CORVANE_DEBUG_OUTPUT", "1");
    const CCorvaneFrameworkApp app;
    CStringW text = u"former";
    folder.write("large", "#define IDH_WALL 12\n");
    std::filesystem::resize_file(folder.path("large"), corvane::app::kLargestHelpFile + 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(app.FindHelpIDInString(folder.wide("large"), 12, text), 0);
    EXPECT_EQ(app.FindHelpHtmFileName(folder.wide("none"), u"IDH_WALL", text), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "caught exception in CCorvaneFrameworkApp::FindHelpIDInString\n"
              "caught exception in CCorvaneFrameworkApp::FindHelpHtmFileName\n");
    EXPECT_EQ(text, u"former");
}

// A copy of the library in an installed tree of its own, with pages of the site.
class HelpSite : public testing::Test {
protected:
    HelpSite() {
        tree_.write("include/common/Help/QORHelpIDs.h",
                    "#define IDH_WALL 12\n#define IDH_GONE 20\n#define IDH_NONE 30\n"
                    "#define IDH_ODD 40\n");
        tree_.write("include/common/Help/corvane.ali",
                    "IDH_WALL=pages\\the wall.htm\nIDH_GONE=gone.htm\nIDH_ODD=odd\x1B.htm\n");
        for (const char* file :
             {"site/pages/the wall.htm", "-site/pages/the wall.htm", "site/odd\x1B.htm"})
            tree_.write(file, "");
        tree_.write("rules.chm", "");
        writeProgram(tree_, "bin/xdg-open");
        writeProgram(tree_, "bin/failing", "exit 3");
        writeProgram(tree_, "bin/xchm");
        tree_.write("lib/Copy.so",
                    tree_.readFile(CORVANE_BUILD_DIR "/lib/libCorvaneFrameworku.so"));
        std::filesystem::create_directory(tree_.path("libexec"));
        std::filesystem::copy(CORVANE_BUILD_DIR "/libexec/corvane-start", tree_.path("libexec"));
        // Never freed: what the library keeps for the life of the process would count as leaked.
        show_ = corvane::system::moduleFunction<decltype(&ShowQORHelp)>(
            corvane::system::loadModule(tree_.wide("lib/Copy.so")), "ShowQORHelp");
    }
    ~HelpSite() override { std::filesystem::current_path(former_); }

    std::string show(QorLong topic) const {
        int shown = -1;
        show_(tree_.wide("rules.chm"), topic, &shown);
        EXPECT_EQ(shown, 1);
        return startedIn(tree_);
    }

    const TemporaryFolder tree_;
    const std::filesystem::path former_ = std::filesystem::current_path();
    const EnvironmentScope path_{"PATH", tree_.path("bin")};
    const EnvironmentScope registry_{"CORVANE_REGISTRY_DIR", tree_.path()};
    const EnvironmentScope opener_{"CORVANE_HELP_OPENER", nullptr};
    const EnvironmentScope site_{"CORVANE_CUSTOMIZED_HELP_FOLDER_PATH", tree_.path("site")};
    decltype(&ShowQORHelp) show_ = nullptr;
};

// The test's own folder above its program has neither of the two files.
TEST_F(HelpSite, OpensItsOwnPageAndOtherwiseTheCompiledHelp) {
    const auto inViewer = [&](int topic) {
        return "xchm|--contextid=" + std::to_string(topic) + "|" + tree_.path("rules.chm") + "\n";
    };
    const corvane::HelpSources sources = corvane::GetHelpSources();
    EXPECT_TRUE(sources.siteFolderExists);
    EXPECT_FALSE(sources.topicFileExists);
    EXPECT_FALSE(sources.pageFileExists);
    EXPECT_EQ(CStringW(sources.opener), tree_.wide("bin/xdg-open"));
    EXPECT_EQ(CStringW(sources.viewer), tree_.wide("bin/xchm"));
    const std::string page = "xdg-open|" + tree_.path("site/pages/the wall.htm") + "\n";
    std::filesystem::current_path(tree_.path());
    EXPECT_EQ(show(12), page);
    for (const int topic : {20, 30, 40, 99})
        EXPECT_EQ(show(topic), inViewer(topic));
    opener_.set("failing");
    EXPECT_EQ(show(12), inViewer(12));
    opener_.set(nullptr);
    site_.set("site");
    EXPECT_EQ(show(12), page);
    for (const char* folder : {"-site", "elsewhere", "", static_cast<const char*>(nullptr)}) {
        site_.set(folder);
        EXPECT_EQ(show(12), inViewer(12));
    }
}

}  // namespace
