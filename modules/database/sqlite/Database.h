#pragma once

#include <cstdint>
#include <sqlite3.h>
#include <string>

#include <corvane/database/Status.h>

#include "LockTimeout.h"

namespace qor_db::sqlite {

/// The status that a result code of the database means, with a message in place of its own.
Status faultOf(int result, CStringW message);

/// An open database file. The connection and its queries share it, so that the last one to go
/// closes it.
class Database {
public:
    explicit Database(sqlite3* handle) : handle_(handle) {}
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close_v2(handle_); }

    sqlite3* handle() const { return handle_; }

    /// The status of the call that has just given this result.
    Status fault(int result) const { return faultOf(result, lastMessage()); }
    CStringW lastMessage() const;

    /// Runs statements of the driver's own, without results.
    Status run(const std::string& statements) const;
    /// The number in the first row of a statement of the driver's own.
    Outcome<std::int64_t> number(const char* statement) const;

    LockTimeout lockTimeout;

    /// Whether begin has begun a transaction that neither commit nor rollback has ended. The
    /// database ends one by itself after some faults, which active() tells.
    bool inTransaction = false;
    bool active() const { return sqlite3_get_autocommit(handle_) == 0; }
    /// A fault when the database has ended the transaction: what follows would not be part of it.
    Status brokenTransaction() const;

    /// From now on statements may not begin or end transactions, unless run() runs them.
    void guardTransactions();

private:
    static int authorise(void* database, int action, const char*, const char*, const char*,
                         const char*);

    sqlite3* handle_;
    mutable bool own_ = false;
};

}  // namespace qor_db::sqlite
