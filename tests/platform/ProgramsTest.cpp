#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/HelpViewer.h"
#include "platform/Programs.h"
#include "platform/Unicode.h"
#include "support/EnvironmentScope.h"
#include "support/Programs.h"

namespace {

using namespace corvane::platform;
using namespace std::chrono_literals;

TEST(Programs, TellWhetherTheyCouldStartAndEndedBadlyInTime) {
    const TemporaryFolder folder;
    const std::string well = writeProgram(folder, "well");
    const std::string badly = writeProgram(folder, "badly", "exit 4");
    const std::string killed = writeProgram(folder, "killed", "kill -9 $$");
    const std::string stays = writeProgram(folder, "stays", "read x < " + folder.path("pipe"));
    ASSERT_EQ(::system(("mkfifo " + folder.path("pipe")).c_str()), 0);
    const auto start = [](const std::string& program, std::chrono::milliseconds patience) {
        return startProgram(fromUtf8(program), {}, patience);
    };
    for (const auto disposition : {SIG_DFL, SIG_IGN}) {
        ::signal(SIGCHLD, disposition);
        EXPECT_FALSE(start(folder.path("none"), 0s));
        EXPECT_FALSE(start(badly, 10s) || start(killed, 10s));
        EXPECT_TRUE(start(badly, 0s) && start(well, 10s));
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
    }
    ::signal(SIGCHLD, SIG_DFL);
    EXPECT_TRUE(start(stays, 50ms));
    EXPECT_EQ(startedIn(folder), "well|\n");
    std::ofstream(folder.path("pipe")).put('\n');
    EXPECT_EQ(startedIn(folder), "stays|\n");
}

TEST(Programs, GetTheirArgumentsAndNothingElseOfTheProcess) {
    const TemporaryFolder folder;
    const std::string program =
        writeProgram(folder, "program",
                     "[ -e /proc/$$/fd/57 ] && echo descriptor >&3\nread line && echo input >&3\n"
                     "while read name value; do case $name in SigBlk:) echo $value >&3;; "
                     "SigIgn:) echo $((0x$value & 0x7fffffff)) >&3;; esac; done < /proc/$$/status");
    ASSERT_EQ(::dup2(STDERR_FILENO, 57), 57);
    ::signal(SIGPIPE, SIG_IGN);
    const std::u16string arguments[] = {u"a b", u"$(touch x);'\"*", u"", u"\u00E9"};
    EXPECT_TRUE(startProgram(fromUtf8(program), arguments, 0s));
    EXPECT_EQ(startedIn(folder), "program|a b|$(touch x);'\"*||\u00E9\n0000000000000000\n0\n");
    sigset_t mask;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_FALSE(sigismember(&mask, SIGTERM)) << "still blocked";
    ::signal(SIGPIPE, SIG_DFL);
    ::close(57);
}

TEST(Programs, AreStartedByAThreadThatIsAskedToEnd) {
    const TemporaryFolder folder;
    std::string program = writeProgram(folder, "program");
    pthread_t thread;
    void* ended = nullptr;
    const auto run = [](void* path) {
        ::pthread_cancel(::pthread_self());
        return startProgram(fromUtf8(*static_cast<std::string*>(path)), {}, 10s) ? path : nullptr;
    };
    ASSERT_EQ(::pthread_create(&thread, nullptr, run, &program), 0);
    ASSERT_EQ(::pthread_join(thread, &ended), 0);
    EXPECT_EQ(ended, &program);
    EXPECT_EQ(startedIn(folder), "program|\n");
}

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
    EXPECT_FALSE(viewer.show(u"a.chm", 7) || viewer.show(fromUtf8(folder_.path()), 7));
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
