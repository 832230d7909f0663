#include "Signals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <unistd.h>

namespace {

/// Those that end a process unasked and leave it the time to clear up.
constexpr int kEnding[] = {SIGHUP, SIGINT, SIGTERM, SIGPIPE, SIGXCPU, SIGXFSZ};
/// What ends a process and its group reaches the process twice at once.
constexpr std::int64_t kSameInterruption = 200;  // milliseconds
/// More than a run has open at a time. What finds no place outlives a signal.
constexpr std::size_t kMostTransients = 64;
/// As deep as the folders are in each other: each round removes those that have become empty.
constexpr int kRounds = 3;

std::array<std::atomic<const char*>, kMostTransients> transients;
std::atomic<bool> endsInOrder = false;
std::atomic<bool> outlivesReader = false;
std::atomic<std::int64_t> interruptedAt = 0;
static_assert(decltype(transients)::value_type::is_always_lock_free);
static_assert(decltype(interruptedAt)::is_always_lock_free);

std::int64_t milliseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000 + 1;
}

/// True when the run is to end in order; false for what ends it at once.
bool noteInterruption(int number) {
    if (!endsInOrder || (number != SIGHUP && number != SIGINT && number != SIGTERM)) return false;
    const std::int64_t now = milliseconds();
    std::int64_t first = 0;
    return interruptedAt.compare_exchange_strong(first, now) || now - first < kSameInterruption;
}

extern "C" void onSignal(int number) {
    // Not ignored for good, since the programs that this one starts would ignore it, too.
    if (number == SIGPIPE && outlivesReader) return;
    const int error = errno;
    if (noteInterruption(number)) {
        errno = error;
        return;
    }
    for (int i = 0; i < kRounds; ++i) {
        for (const std::atomic<const char*>& transient : transients) {
            const char* const path = transient;
            if (path && unlink(path) != 0) rmdir(path);
        }
    }
    std::signal(number, SIG_DFL);
    raise(number);  // comes through when this function is left
}

}  // namespace

void catchSignals() {
    struct sigaction action {};
    action.sa_handler = onSignal;
    for (const int number : kEnding) {
        struct sigaction former {};
        if (sigaction(number, nullptr, &former) == 0 && former.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
}

void catchInterruption() {
    endsInOrder = true;
}

bool wasInterrupted() {
    return interruptedAt != 0;
}

void outliveReader() {
    outlivesReader = true;
}

Transient::Transient(std::string path) : path_(std::move(path)) {
    for (std::atomic<const char*>& transient : transients) {
        const char* none = nullptr;
        if (transient.compare_exchange_strong(none, path_.c_str())) return;
    }
}

Transient::~Transient() {
    for (std::atomic<const char*>& transient : transients) {
        const char* own = path_.c_str();
        if (transient.compare_exchange_strong(own, nullptr)) return;
    }
}
