#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "system/Programs.h"
#include "system/Unicode.h"
#include "system/posix/NativePath.h"

// This process makes a starter, the starter makes the program, looks after it for a moment and
// ends. So the program is no child of this process, which has only the starter to wait for. The
// starter borrows this process's memory instead of copying it, since a host may have gigabytes;
// what the program needs is prepared before it is made.

namespace corvane::system {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kLookAgain{5};
constexpr int kFirstFree = 3;  // behind the standard descriptors

// What a program starts with: nothing to read, nowhere to write, no other descriptor, a session of
// its own, no signal blocked and none ignored.
class Surroundings {
public:
    Surroundings() {
        posix_spawn_file_actions_init(&files_);
        fault_ = posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        for (int output = STDIN_FILENO + 1; output < kFirstFree; ++output)
            fault_ |= posix_spawn_file_actions_adddup2(&files_, STDIN_FILENO, output);
        fault_ |= posix_spawn_file_actions_addclosefrom_np(&files_, kFirstFree);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    }
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;
    ~Surroundings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }

    // The program's process, or -1 when it cannot be started.
    pid_t spawn(char* const* arguments) const {
        pid_t program = -1;
        const int error = fault_ != 0 ? fault_
                                      : ::posix_spawn(&program, arguments[0], &files_, &attributes_,
                                                      arguments, environ);
        return error == 0 ? program : -1;
    }

private:
    int fault_;  // not 0 when there was no memory for all of this
    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
};

// False when the program ends badly in time.
bool runsOn(pid_t program, milliseconds patience) {
    const Clock::time_point end = Clock::now() + patience;
    while (Clock::now() < end) {
        int status = 0;
        if (::waitpid(program, &status, WNOHANG) == program)
            return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        std::this_thread::sleep_for(kLookAgain);
    }
    return true;
}

// The starter's memory and stack are the host's: keeps the host's handlers out of it, and a request
// to cancel the thread, which would unwind the stack there.
class Undisturbed {
public:
    Undisturbed() {
        sigset_t all;
        sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &signals_);
        ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState_);
    }
    Undisturbed(const Undisturbed&) = delete;
    Undisturbed& operator=(const Undisturbed&) = delete;
    ~Undisturbed() {
        ::pthread_setcancelstate(cancelState_, nullptr);
        ::pthread_sigmask(SIG_SETMASK, &signals_, nullptr);
    }

private:
    sigset_t signals_;
    int cancelState_ = PTHREAD_CANCEL_ENABLE;
};

// Runs in the starter. It may not return from there, nor throw.
[[noreturn]] void beStarter(const Surroundings& surroundings, char* const* arguments,
                            milliseconds patience, volatile bool& started) {
    ::signal(SIGCHLD, SIG_DFL);
    const pid_t program = surroundings.spawn(arguments);
    started = program > 0 && runsOn(program, patience);
    ::_exit(0);
}

}  // namespace

bool startProgram(std::u16string_view program, std::span<const std::u16string> arguments,
                  milliseconds patience) {
    std::vector<std::string> texts{nativePath(program)};
    for (const std::u16string& argument : arguments) {
        if (argument.find(u'\0') != argument.npos) return false;
        texts.push_back(toUtf8(argument));
    }
    std::vector<char*> pointers(texts.size() + 1);
    std::ranges::transform(texts, pointers.begin(), [](std::string& text) { return text.data(); });

    const Surroundings surroundings;
    const Undisturbed undisturbed;
    volatile bool started = false;
    const pid_t starter = ::vfork();  // NOLINT: a copy of the host's memory is what it avoids.
    if (starter == 0) beStarter(surroundings, pointers.data(), patience, started);
    // A host that takes care of all children may be faster.
    while (starter > 0 && ::waitpid(starter, nullptr, 0) < 0 && errno == EINTR) {
    }
    return started;
}

}  // namespace corvane::system
