#include "LockTimeout.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <thread>

namespace qor_db::sqlite {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPause{1};

// Called after each attempt that met a lock; 0 gives up. The time-out stands in the pointer.
int waitForLock(void* timeout, int attempts) {
    // A thread waits for one lock at a time.
    thread_local Clock::time_point start;
    if (attempts == 0) start = Clock::now();
    const std::chrono::milliseconds limit(reinterpret_cast<std::intptr_t>(timeout));
    if (Clock::now() - start >= limit) return 0;
    std::this_thread::sleep_for(kPause);
    return 1;
}

}  // namespace

void setLockTimeout(sqlite3* handle, int milliseconds) {
    const std::intptr_t limit = std::max(milliseconds, 0);
    sqlite3_busy_handler(handle, &waitForLock, reinterpret_cast<void*>(limit));
}

}  // namespace qor_db::sqlite
