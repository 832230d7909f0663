#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/Programs.h"
#include "platform/Unicode.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/NativePath.h"

// This process forks a starter, the starter forks the program, looks after it for a moment, answers
// and ends. So the program is no child of this process, which has only the starter to wait for.
// Between fork and exec nothing is called that a child of a process with threads may not call.

namespace corvane::platform {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kLookAgain{5};
constexpr int kFirstFree = 3;  // behind the standard descriptors
constexpr int kMostDescriptors = 1 << 16;
constexpr int kCannotStart = 127;

// A byte from a pipe; nothing when it is closed without one.
std::optional<char> readByte(int pipe) {
    char byte;
    ssize_t count;
    do {
        count = ::read(pipe, &byte, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1 ? std::optional(byte) : std::nullopt;
}

void writeByte(int pipe, char byte) {
    writeAll(pipe, {&byte, 1});
}

void resetSignals() {
    for (int number = 1; number <= SIGRTMAX; ++number)
        ::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void closeAtExec() {
    if (::close_range(kFirstFree, ~0U, CLOSE_RANGE_CLOEXEC) == 0) return;
    // An older kernel.
    const auto limit = ::sysconf(_SC_OPEN_MAX);
    const int end =
        limit < 0 || limit > kMostDescriptors ? kMostDescriptors : static_cast<int>(limit);
    for (int number = kFirstFree; number < end; ++number)
        ::fcntl(number, F_SETFD, FD_CLOEXEC);
}

[[noreturn]] void becomeProgram(char* const* arguments, int failure) {
    // The pipe may have taken the place of a standard descriptor that the host has closed.
    const int report = ::fcntl(failure, F_DUPFD_CLOEXEC, kFirstFree);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (int standard = 0; standard < kFirstFree; ++standard)
        ::dup2(nothing, standard);
    closeAtExec();
    resetSignals();
    ::execv(arguments[0], arguments);
    writeByte(report, 0);
    ::_exit(kCannotStart);
}

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

[[noreturn]] void becomeStarter(char* const* arguments, milliseconds patience, int answer) {
    ::setsid();
    ::signal(SIGCHLD, SIG_DFL);
    std::array<int, 2> failure{-1, -1};
    const pid_t program = ::pipe2(failure.data(), O_CLOEXEC) == 0 ? ::fork() : -1;
    if (program == 0) becomeProgram(arguments, failure[1]);
    ::close(failure[1]);
    // The pipe is closed without a byte when the program takes over.
    const bool started = program > 0 && !readByte(failure[0]) && runsOn(program, patience);
    writeByte(answer, started ? 1 : 0);
    ::_exit(0);
}

// Forks while no handler of the host's can run in the child.
pid_t forkQuietly() {
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former);
    const pid_t child = ::fork();
    const int error = errno;
    if (child != 0) ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
    errno = error;
    return child;
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

    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return false;
    const Descriptor answer(pipe[0]);
    Descriptor answering(pipe[1]);
    const pid_t starter = forkQuietly();
    if (starter == 0) becomeStarter(pointers.data(), patience, answering.get());
    answering.close();
    if (starter < 0) return false;
    const bool started = readByte(answer.get()).value_or(0) == 1;
    // A host that takes care of all children may have been faster.
    while (::waitpid(starter, nullptr, 0) < 0 && errno == EINTR) {
    }
    return started;
}

}  // namespace corvane::platform
