#pragma once

#include <chrono>
#include <sqlite3.h>

namespace qor_db::sqlite {

/// How long the statements of one database handle wait for the lock of another one.
///
/// The database's own time-out asks ever more seldom, up to ten times a second: a reader then
/// hardly ever finds the moments in which a process that writes without a pause has no lock.
class LockTimeout {
public:
    LockTimeout() = default;
    LockTimeout(const LockTimeout&) = delete;
    LockTimeout& operator=(const LockTimeout&) = delete;

    /// Below 0 counts as 0. The object must live as long as statements of the handle run.
    void set(sqlite3* handle, int milliseconds);

private:
    static int wait(void* timeout, int attempts);

    std::chrono::milliseconds limit_{0};
    std::chrono::steady_clock::time_point start_;
};

}  // namespace qor_db::sqlite
