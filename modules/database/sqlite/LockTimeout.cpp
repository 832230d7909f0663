#include "LockTimeout.h"

#include <algorithm>
#include <thread>

namespace qor_db::sqlite {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPause{1};

}  // namespace

void LockTimeout::set(sqlite3* handle, int milliseconds) {
    limit_ = std::chrono::milliseconds(std::max(milliseconds, 0));
    sqlite3_busy_handler(handle, &wait, this);
}

// Called after each attempt that met a lock; 0 gives up.
int LockTimeout::wait(void* timeout, int attempts) {
    auto& self = *static_cast<LockTimeout*>(timeout);
    if (attempts == 0) self.start_ = Clock::now();
    if (Clock::now() - self.start_ >= self.limit_) return 0;
    std::this_thread::sleep_for(kPause);
    return 1;
}

}  // namespace qor_db::sqlite
