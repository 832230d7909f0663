#include <csignal>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Programs.h"
#include "system/Programs.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::system;
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
        EXPECT_FALSE(start(badly, 10s));
        EXPECT_FALSE(start(killed, 10s));
        EXPECT_TRUE(start(badly, 0s));
        EXPECT_TRUE(start(well, 10s));
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

// What looks after a program for its first moments may not do it in the host's memory, nor keep the
// host's thread from its signals.
TEST(Programs, AreLookedAfterOutsideOfTheProcess) {
    const TemporaryFolder folder;
    const std::string program =
        writeProgram(folder, "program", "readlink /proc/$PPID/exe >&3; sleep 0.3");
    static std::chrono::steady_clock::time_point told;
    ::signal(SIGALRM, [](int) { told = std::chrono::steady_clock::now(); });
    const itimerval soon{{0, 0}, {0, 20'000}};
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(::setitimer(ITIMER_REAL, &soon, nullptr), 0);
    EXPECT_TRUE(startProgram(fromUtf8(program), {}, 10s));
    EXPECT_LT(told - start, 250ms);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
    ::signal(SIGALRM, SIG_DFL);
    const std::string parent = startedIn(folder);
    EXPECT_TRUE(parent.ends_with("/corvane-start\n")) << parent;
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

}  // namespace
