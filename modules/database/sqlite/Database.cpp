#include "Database.h"

#include <utility>

namespace qor_db::sqlite {
namespace {

// https://www.sqlite.org/rescode.html
ErrorCode codeOf(int result) {
    if (result == SQLITE_IOERR_NOMEM) return ErrorCode::OutOfMemory;
    switch (result & 0xFF) {
        case SQLITE_OK:
            return ErrorCode::Ok;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
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

CStringW Database::lastMessage() const {
    return CStringW::FromUtf8(sqlite3_errmsg(handle_));
}

Status Database::run(const std::string& statements) const {
    own_ = true;
    const int result = sqlite3_exec(handle_, statements.c_str(), nullptr, nullptr, nullptr);
    own_ = false;
    return result == SQLITE_OK ? Status() : fault(result);
}

Outcome<std::int64_t> Database::number(const char* statement) const {
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(handle_, statement, -1, &prepared, nullptr);
    if (result == SQLITE_OK) result = sqlite3_step(prepared);
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

void Database::guardTransactions() {
    sqlite3_set_authorizer(handle_, &authorise, this);
}

int Database::authorise(void* database, int action, const char*, const char*, const char*,
                        const char*) {
    const bool transaction = action == SQLITE_TRANSACTION || action == SQLITE_SAVEPOINT;
    return transaction && !static_cast<Database*>(database)->own_ ? SQLITE_DENY : SQLITE_OK;
}

}  // namespace qor_db::sqlite
