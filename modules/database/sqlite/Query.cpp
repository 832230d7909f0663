#include "Query.h"

#include <limits>
#include <new>
#include <string>
#include <utility>

namespace qor_db::sqlite {
namespace {

int bindText(sqlite3_stmt* statement, int index, const CStringW& text) {
    // Turned into UTF-8 here: the database's own way would swallow what follows a lone surrogate.
    const std::string bytes = text.ToUtf8();
    return sqlite3_bind_text64(statement, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT,
                               SQLITE_UTF8);
}

int bindBytes(sqlite3_stmt* statement, int index, const Bytes& bytes) {
    if (bytes.empty()) return sqlite3_bind_zeroblob(statement, index, 0);
    return sqlite3_bind_blob64(statement, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
}

int bindValue(sqlite3_stmt* statement, int index, const Value& value) {
    if (value.integer()) return sqlite3_bind_int64(statement, index, *value.integer());
    if (value.real()) return sqlite3_bind_double(statement, index, *value.real());
    if (value.text()) return bindText(statement, index, *value.text());
    if (value.bytes()) return bindBytes(statement, index, *value.bytes());
    return sqlite3_bind_null(statement, index);
}

Value readValue(sqlite3_stmt* statement, int column) {
    const int type = sqlite3_column_type(statement, column);
    if (type == SQLITE_NULL) return {};
    if (type == SQLITE_INTEGER) return std::int64_t{sqlite3_column_int64(statement, column)};
    if (type == SQLITE_FLOAT) return sqlite3_column_double(statement, column);
    const void* data = type == SQLITE_TEXT ? sqlite3_column_text(statement, column)
                                           : sqlite3_column_blob(statement, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    if (type == SQLITE_TEXT) {
        if (!data) throw std::bad_alloc();
        return CStringW::FromUtf8({static_cast<const char*>(data), size});
    }
    if (!data && size > 0) throw std::bad_alloc();
    const auto* bytes = static_cast<const std::byte*>(data);
    return Bytes(bytes, bytes + size);
}

// Prepares the first statement of `text`, which then is what follows it. Comments and
// semicolons alone give none.
int prepareFirst(sqlite3* handle, std::string_view& text, Statement& statement) {
    sqlite3_stmt* prepared = nullptr;
    const char* rest = text.data() + text.size();
    const int result =
        sqlite3_prepare_v3(handle, text.data(), static_cast<int>(text.size()), 0, &prepared, &rest);
    statement.reset(prepared);
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    return result;
}

}  // namespace

Outcome<std::unique_ptr<IQuery>> Query::prepare(const std::shared_ptr<Database>& database,
                                                std::u16string_view text) {
    const std::string bytes = CStringW(text).ToUtf8();
    if (bytes.size() > std::numeric_limits<int>::max() || bytes.find('\0') != bytes.npos)
        return driver::failure(ErrorCode::BadQuery,
                               u"The statement is too long or holds a zero character.");
    std::string_view rest = bytes;
    Statement statement;
    while (!statement && !rest.empty()) {
        const int result = prepareFirst(database->handle(), rest, statement);
        if (result == SQLITE_TOOBIG)
            return driver::failure(ErrorCode::BadQuery, u"The statement is too long.", result);
        if (result != SQLITE_OK) return database->fault(result);
    }
    if (!statement) return driver::failure(ErrorCode::BadQuery, u"The statement is empty.");
    while (!rest.empty()) {
        Statement second;
        if (prepareFirst(database->handle(), rest, second) != SQLITE_OK || second)
            return driver::failure(ErrorCode::BadQuery, u"A query is one statement, not several.");
    }
    return std::unique_ptr<IQuery>(std::make_unique<Query>(database, std::move(statement)));
}

Query::Query(std::shared_ptr<Database> database, Statement statement)
    : database_(std::move(database)), statement_(std::move(statement)) {
    readColumns();
}

void Query::readColumns() {
    columns_.clear();
    for (int i = 0; i < sqlite3_column_count(statement_.get()); ++i) {
        const char* name = sqlite3_column_name(statement_.get(), i);
        if (!name) throw std::bad_alloc();
        columns_.push_back(CStringW::FromUtf8(name));
    }
}

Status Query::run(const std::vector<Value>& parameters) {
    rows_.clear();
    held_ = false;
    sqlite3_reset(statement_.get());
    Status status = database_->brokenTransaction();
    if (status.ok()) status = bind(parameters);
    if (status.ok()) status = start();
    // Ends the statement and with it its lock.
    if (!held_) sqlite3_reset(statement_.get());
    return status;
}

Status Query::bind(const std::vector<Value>& parameters) {
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const int result = bindValue(statement_.get(), static_cast<int>(i + 1), parameters[i]);
        if (result != SQLITE_OK) return database_->fault(result);
    }
    return {};
}

Status Query::start() {
    const bool reads = onlyReads();
    const std::int64_t before = sqlite3_total_changes64(database_->handle());
    int result = database_->step(statement_.get());
    // The tables may have changed since the statement was prepared.
    if (sqlite3_stmt_status(statement_.get(), SQLITE_STMTSTATUS_REPREPARE, 1) > 0) readColumns();
    held_ = reads && result == SQLITE_ROW;
    if (held_) return {};
    // A change is only done when all of its rows were fetched.
    for (; result == SQLITE_ROW; result = database_->step(statement_.get()))
        rows_.push_back(read());
    if (result != SQLITE_DONE) return database_->fault(result);
    if (sqlite3_total_changes64(database_->handle()) != before)
        changedRows_ = sqlite3_changes64(database_->handle());
    return {};
}

Row Query::read() const {
    std::vector<Value> values;
    const int count = sqlite3_data_count(statement_.get());
    values.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        values.push_back(readValue(statement_.get(), i));
    return Row(std::move(values));
}

Outcome<bool> Query::advance(Row& row) {
    if (!rows_.empty()) {
        row = std::move(rows_.front());
        rows_.pop_front();
        return true;
    }
    if (!sqlite3_stmt_busy(statement_.get())) return false;
    const int result = std::exchange(held_, false) ? SQLITE_ROW : database_->step(statement_.get());
    if (result == SQLITE_ROW) {
        row = read();
        return true;
    }
    Status status = result == SQLITE_DONE ? Status() : database_->fault(result);
    sqlite3_reset(statement_.get());
    if (!status.ok()) return status;
    return false;
}

}  // namespace qor_db::sqlite
