#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "emulation/Help.h"
#include "support/EnvironmentScope.h"
#include "support/Programs.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;

class Viewer : public testing::Test {
protected:
    void enter(const std::string& value) const {
        folder_.write("machine.reg",
                      "REGEDIT4\n[HKEY_CLASSES_ROOT\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}"
                      "\\InprocServer32]\n@=\"" +
                          value + "\"\n");
    }

    const TemporaryFolder folder_;
    const std::string file_ = folder_.path("a.chm");
    const EnvironmentScope path_{"PATH", ".::" + folder_.path("none") + ":" + folder_.path()};
    const EnvironmentScope registry_{"CORVANE_REGISTRY_DIR", folder_.path()};
    const std::filesystem::path former_ = std::filesystem::current_path();
};

TEST_F(Viewer, IsTheRegisteredOneOrAKnownOneAndGetsTheTopicInItsOwnWay) {
    const std::string long_(130, 'x');
    folder_.write("a.chm", "");
    folder_.write("none/own", "not executable");
    writeProgram(folder_, "own");
    writeProgram(folder_, long_);
    writeProgram(folder_, "kchmviewer");
    const auto shown = [&](const std::string& registered) {
        enter(registered);
        return HelpViewer().show(fromUtf8(file_), 7) ? startedIn(folder_) : "";
    };
    EXPECT_EQ(shown("own"), "own|" + file_ + "|7\n");
    EXPECT_EQ(shown(folder_.path("own")), "own|" + file_ + "|7\n");
    EXPECT_EQ(shown(long_), "kchmviewer|" + file_ + "\n");
    writeProgram(folder_, "xchm");
    EXPECT_EQ(shown("C:\\\\WINDOWS\\\\hhctrl.ocx"), "xchm|--contextid=7|" + file_ + "\n");
}

TEST_F(Viewer, IsSoughtOnceAndRefusesWhatCouldMeanSomethingElse) {
    HelpViewer without;
    EXPECT_FALSE(without.show(fromUtf8(file_), 7));
    writeProgram(folder_, "xchm");
    for (const char* name : {"a.chm", "-x.chm", "a\nb.chm", "a\x7F.chm", "c\nd/a.chm"})
        folder_.write(name, "");
    HelpViewer viewer;
    std::filesystem::current_path(folder_.path("c\nd"));
    EXPECT_FALSE(viewer.show(u"a.chm", 7));
    EXPECT_FALSE(viewer.show(fromUtf8(folder_.path()), 7));
    std::filesystem::current_path(folder_.path());
    for (const char16_t* file : {u"", u"gone.chm", u"-x.chm", u"a\nb.chm", u"a\x7F.chm"})
        EXPECT_FALSE(viewer.show(file, 7)) << toUtf8(file);
    EXPECT_FALSE(viewer.show(u"a.chm", -7));
    EXPECT_FALSE(without.show(u"a.chm", 7));
    writeProgram(folder_, "own");
    enter("own");
    EXPECT_TRUE(viewer.show(u"a.chm", 8));
    EXPECT_EQ(startedIn(folder_), "xchm|--contextid=8|" + file_ + "\n");
    std::filesystem::current_path(former_);
}

}  // namespace
