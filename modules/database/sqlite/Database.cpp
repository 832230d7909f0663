#include "Database.h"

#include <thread>
#include <utility>

namespace qor_db::sqlite {
namespace {

constexpr const char16_t* kRefused =
    u"A statement may neither begin or end a transaction nor open another database file.";

// https://www.sqlite.org/rescode.html
ErrorCode codeOf(int result) {
    if (result == SQLITE_IOERR_NOMEM) return ErrorCode::OutOfMemory;
    switch (result & 0xFF) {
        case SQLITE_OK:
            return ErrorCode::Ok;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return ErrorCode::Locked;
        case SQLITE_READONLY:
            return ErrorCode::ReadOnly;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return ErrorCode::Damaged;
        case SQLITE_CONSTRAINT:
        case SQLITE_MISMATCH:
            return ErrorCode::Constraint;
        case SQLITE_FULL:
            return ErrorCode::StorageFull;
        case SQLITE_NOMEM:
            return ErrorCode::OutOfMemory;
        case SQLITE_PERM:
        case SQLITE_CANTOPEN:
            return ErrorCode::CannotOpen;
        case SQLITE_ERROR:
        case SQLITE_SCHEMA:
        case SQLITE_AUTH:
            return ErrorCode::BadQuery;
        case SQLITE_INTERRUPT:
            return ErrorCode::TimedOut;
        case SQLITE_TOOBIG:
        case SQLITE_RANGE:
            return ErrorCode::BadParameter;
        default:
            return ErrorCode::Failed;
    }
}

}  // namespace

Status faultOf(int result, CStringW message) {
    return {codeOf(result), std::move(message), result};
}

Database::Database(sqlite3* handle, const OpenRequest& request)
    : handle_(handle),
      timeout_(request.timeoutMilliseconds),
      limit_(request.statementMilliseconds) {
    constexpr int kInstructions = 10000;  // less than a millisecond of work
    sqlite3_progress_handler(handle_, kInstructions, &isOverdue, this);
    sqlite3_busy_handler(handle_, &waitForLock, this);
}

Status Database::fault(int result) const {
    if (result == SQLITE_AUTH) return faultOf(result, kRefused);
    if (result == SQLITE_INTERRUPT) return faultOf(result, u"The statement ran for too long.");
    return faultOf(result, CStringW::FromUtf8(sqlite3_errmsg(handle_)));
}

int Database::step(sqlite3_stmt* statement) const {
    startClock();
    // VACUUM runs a transaction of its own.
    own_ = true;
    const int result = sqlite3_step(statement);
    own_ = false;
    return result;
}

Status Database::run(const std::string& statements) const {
    startClock();
    own_ = true;
    const int result = sqlite3_exec(handle_, statements.c_str(), nullptr, nullptr, nullptr);
    own_ = false;
    return result == SQLITE_OK ? Status() : fault(result);
}

Outcome<std::int64_t> Database::number(const char* statement) const {
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(handle_, statement, -1, &prepared, nullptr);
    if (result == SQLITE_OK) result = step(prepared);
    const std::int64_t value = result == SQLITE_ROW ? sqlite3_column_int64(prepared, 0) : 0;
    Status status = result == SQLITE_ROW ? Status() : fault(result);
    sqlite3_finalize(prepared);
    if (!status.ok()) return status;
    return value;
}

Status Database::brokenTransaction() const {
    if (!inTransaction || active()) return {};
    return {ErrorCode::BadTransaction, u"The transaction was rolled back after a fault.", 0};
}

void Database::guardStatements() {
    sqlite3_set_authorizer(handle_, &authorise, this);
}

int Database::authorise(void* database, int action, const char* argument, const char*, const char*,
                        const char*) {
    const bool transaction = action == SQLITE_TRANSACTION || action == SQLITE_SAVEPOINT;
    // VACUUM works in a nameless file of its own.
    const bool file = action == SQLITE_ATTACH && (!argument || *argument != '\0');
    const bool refused = file || (transaction && !static_cast<Database*>(database)->own_);
    return refused ? SQLITE_DENY : SQLITE_OK;
}

int Database::isOverdue(void* database) {
    return Clock::now() > static_cast<Database*>(database)->deadline_;
}

// The database's own handler sleeps ever longer, and would miss the moments between the commits of
// a process that makes one small change after the other.
int Database::waitForLock(void* database, int attempts) {
    auto& self = *static_cast<Database*>(database);
    const Clock::time_point now = Clock::now();
    if (attempts == 0) self.waitingSince_ = now;
    if (now - self.waitingSince_ >= self.timeout_) return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    self.deadline_ += Clock::now() - now;
    return 1;
}

}  // namespace qor_db::sqlite
