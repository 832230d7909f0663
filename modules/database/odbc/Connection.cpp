#include "Connection.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "Query.h"
#include "Tables.h"

namespace qor_db::odbc {
namespace {

constexpr std::u16string_view kSchemaTable = u"QorSchema";
/// Fits each name of that length: which case a server gives a name is its own affair.
constexpr const char16_t* kSchemaTablePattern = u"_________";
static_assert(kSchemaTable.size() == std::u16string_view(kSchemaTablePattern).size());

}  // namespace

Outcome<std::unique_ptr<IQuery>> Connection::prepare(std::u16string_view statement) {
    return driver::guarded([&] { return Query::prepare(session_, statement); });
}

void Connection::setTimeout(int milliseconds) noexcept {
    // Without memory for a message the time-out stays as it was.
    static_cast<void>(driver::guarded([&] {
        session_->setTimeout(milliseconds);
        return Status();
    }));
}

Outcome<std::unique_ptr<IQuery>> Connection::execute(std::u16string_view text,
                                                     const std::vector<Value>& parameters) {
    Outcome<std::unique_ptr<IQuery>> query = Query::prepare(session_, text);
    if (!query) return query;
    Status status = (*query)->execute(parameters);
    if (!status.ok()) return status;
    return query;
}

// Looked for until it is there once, since nobody takes it away again but a rollback.
Outcome<bool> Connection::hasSchemaTable() {
    if (schemaTableKnown_) return true;
    const Outcome<std::vector<CStringW>> names = tableNames(*session_, kSchemaTablePattern);
    if (!names) return names.status();
    const bool there = std::any_of(names->begin(), names->end(), [](const CStringW& name) {
        return name.CompareNoCase(kSchemaTable) == 0;
    });
    schemaTableKnown_ = there && !inTransaction();
    return there;
}

Outcome<int> Connection::schemaVersion() {
    return driver::guarded([this]() -> Outcome<int> {
        const Outcome<bool> there = hasSchemaTable();
        if (!there) return there.status();
        if (!*there) return 0;
        const auto query = execute(u"SELECT version FROM QorSchema");
        if (!query) return query.status();
        if (!(*query)->next()) return 0;
        const std::int64_t version = (*query)->row().integer(0).value_or(-1);
        if (version < 0 || version > std::numeric_limits<int>::max())
            return driver::failure(ErrorCode::Damaged, u"QorSchema holds no version.");
        return static_cast<int>(version);
    });
}

Status Connection::setSchemaVersion(int version) {
    return driver::guarded([&] {
        const Outcome<bool> there = hasSchemaTable();
        if (!there) return there.status();
        if (!*there) {
            const auto made = execute(u"CREATE TABLE QorSchema (version INTEGER NOT NULL)");
            if (!made) return made.status();
        }
        const auto updated = execute(u"UPDATE QorSchema SET version = ?", {version});
        if (!updated || (*updated)->changedRows() > 0) return updated.status();
        return execute(u"INSERT INTO QorSchema (version) VALUES (?)", {version}).status();
    });
}

Outcome<bool> Connection::isEmpty() {
    return driver::guarded([this]() -> Outcome<bool> {
        const Outcome<std::vector<CStringW>> names = tableNames(*session_, u"%");
        if (!names) return names.status();
        return names->empty();
    });
}

Status Connection::beginTransaction() {
    const Outcome<bool> there = hasSchemaTable();
    if (!there) return there.status();
    Status status = session_->begin();
    if (!status.ok() || !*there) return status;
    status = execute(u"UPDATE QorSchema SET version = version").status();
    if (!status.ok()) static_cast<void>(session_->rollback());
    // The table is there: what is wrong with the statement is the right to change it.
    if (status.code == ErrorCode::BadQuery) status.code = ErrorCode::ReadOnly;
    return status;
}

}  // namespace qor_db::odbc
