// The program corvane-start: starts a program for a host, looks after it for a moment and ends. So
// the program is no child of the host and leaves it no zombie, whatever the host does with its
// children, and none of this runs in the host's memory.
//
// Usage: corvane-start MILLISECONDS PROGRAM [ARGUMENT...]
// One byte on the standard output says that the program was started and did not end badly in time.

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

#include "system/posix/Spawn.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBadUsage = 2;

// Waits for the end of a child, which must be blocked as a signal, for so long at most.
void awaitChild(const sigset_t& ended, Clock::duration longest) {
    using namespace std::chrono;
    const auto whole = duration_cast<seconds>(longest);
    timespec time{};
    time.tv_sec = static_cast<time_t>(whole.count());
    time.tv_nsec = static_cast<long>(duration_cast<nanoseconds>(longest - whole).count());
    ::sigtimedwait(&ended, nullptr, &time);
}

bool runsOn(pid_t program, const sigset_t& ended, std::chrono::milliseconds patience) {
    const Clock::time_point end = Clock::now() + patience;
    for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
        int status = 0;
        if (::waitpid(program, &status, WNOHANG) == program)
            return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        awaitChild(ended, end - now);
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return kBadUsage;
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    ::sigprocmask(SIG_BLOCK, &ended, nullptr);
    const std::chrono::milliseconds patience(std::strtol(argv[1], nullptr, 10));
    const pid_t program = corvane::system::Spawn(-1).start(argv + 2);
    if (program < 0 || !runsOn(program, ended, patience)) return EXIT_FAILURE;
    return ::write(STDOUT_FILENO, "+", 1) == 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
