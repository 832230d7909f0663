#pragma once

#include <chrono>
#include <cstdint>
#include <sqlite3.h>
#include <string>

#include <corvane/database/IDatabaseDriver.h>

namespace qor_db::sqlite {

/// The status that a result code of the database means, with a message in place of its own.
Status faultOf(int result, CStringW message);

/// An open database file. The connection and its queries share it, so that the last one to go
/// closes it.
class Database {
public:
    /// Takes what the request says about time.
    Database(sqlite3* handle, const OpenRequest& request);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close_v2(handle_); }

    sqlite3* handle() const { return handle_; }
    /// How long to wait for a lock.
    void setTimeout(int milliseconds) { timeout_ = std::chrono::milliseconds(milliseconds); }

    /// The status of the call that has just given this result.
    Status fault(int result) const;

    /// Executes the statement up to its next row. What takes too long ends with TimedOut.
    int step(sqlite3_stmt* statement) const;
    /// Runs statements of the driver's own, without results.
    Status run(const std::string& statements) const;
    /// The number in the first row of a statement of the driver's own.
    Outcome<std::int64_t> number(const char* statement) const;

    /// Whether begin has begun a transaction that neither commit nor rollback has ended. The
    /// database ends one by itself after some faults, which active() tells.
    bool inTransaction = false;
    bool active() const { return sqlite3_get_autocommit(handle_) == 0; }
    /// A fault when the database has ended the transaction: what follows would not be part of it.
    Status brokenTransaction() const;

    /// From now on statements may neither begin nor end transactions, unless run() runs them, nor
    /// open other files.
    void guardStatements();

private:
    using Clock = std::chrono::steady_clock;

    static int authorise(void* database, int action, const char* argument, const char*, const char*,
                         const char*);
    static int isOverdue(void* database);
    static int waitForLock(void* database, int attempts);
    void startClock() const { deadline_ = Clock::now() + limit_; }

    sqlite3* handle_;
    std::chrono::milliseconds timeout_;
    std::chrono::milliseconds limit_;
    mutable Clock::time_point deadline_;
    Clock::time_point waitingSince_;
    mutable bool own_ = false;
};

}  // namespace qor_db::sqlite
