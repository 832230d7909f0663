#include "Connection.h"

#include <string>

#include "Query.h"

namespace qor_db::sqlite {
namespace {

/// "QorR": the mark of this library's database files. Without it, the version in a file is that of
/// another program's tables.
constexpr std::int64_t kApplicationId = 0x516F7252;

}  // namespace

// Queries may hold the file open for longer.
Connection::~Connection() {
    static_cast<void>(rollback());
}

Outcome<std::unique_ptr<IQuery>> Connection::prepare(std::u16string_view statement) {
    return driver::guarded([&] { return Query::prepare(database_, statement); });
}

void Connection::setTimeout(int milliseconds) noexcept {
    database_->setTimeout(milliseconds);
}

bool Connection::readOnly() const noexcept {
    return sqlite3_db_readonly(database_->handle(), "main") != 0;
}

Outcome<int> Connection::schemaVersion() {
    return driver::guarded([this]() -> Outcome<int> {
        const Outcome<std::int64_t> mark = database_->number("PRAGMA application_id");
        if (!mark) return mark.status();
        if (*mark != kApplicationId) return 0;
        const Outcome<std::int64_t> version = database_->number("PRAGMA user_version");
        if (!version) return version.status();
        if (*version < 0)
            return faultOf(SQLITE_CORRUPT, u"The version of the tables is below zero.");
        return static_cast<int>(*version);
    });
}

Status Connection::setSchemaVersion(int version) {
    return driver::guarded([&] {
        const Outcome<std::int64_t> mark = database_->number("PRAGMA application_id");
        const Outcome<std::int64_t> former = database_->number("PRAGMA user_version");
        if (!mark || !former) return mark ? former.status() : mark.status();
        // That program would take its tables for those of another release.
        if (*mark != kApplicationId && (*mark != 0 || *former != 0))
            return driver::failure(ErrorCode::Failed,
                                   u"The database file bears the mark of another program.");
        return database_->run("PRAGMA application_id=" + std::to_string(kApplicationId) +
                              "; PRAGMA user_version=" + std::to_string(version));
    });
}

Outcome<bool> Connection::isEmpty() {
    return driver::guarded([this]() -> Outcome<bool> {
        const Outcome<std::int64_t> empty =
            database_->number("SELECT NOT EXISTS (SELECT 1 FROM sqlite_schema)");
        if (!empty) return empty.status();
        return *empty != 0;
    });
}

Status Connection::beginTransaction() {
    Status status = database_->run("BEGIN IMMEDIATE");
    database_->inTransaction = status.ok();
    return status;
}

Status Connection::commitTransaction() {
    Status broken = database_->brokenTransaction();
    if (!broken.ok()) return broken;
    Status status = database_->run("COMMIT");
    database_->inTransaction = !status.ok();
    return status;
}

Status Connection::rollbackTransaction() {
    Status status = database_->active() ? database_->run("ROLLBACK") : Status();
    database_->inTransaction = !status.ok();
    return status;
}

}  // namespace qor_db::sqlite
