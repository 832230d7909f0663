#include "Query.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "Parameters.h"
#include "StatementText.h"

namespace qor_db::odbc {
namespace {

/// "The driver does not support this function."
constexpr std::u16string_view kNoSuchFunction = u"IM001";

}  // namespace

Outcome<std::unique_ptr<IQuery>> Query::prepare(const std::shared_ptr<Session>& session,
                                                std::u16string_view text) {
    const Outcome<std::u16string_view> statement = oneStatement(text);
    if (!statement) return statement.status();
    auto query = std::make_unique<Query>(session);
    Status status = query->prepare(*statement);
    if (!status.ok()) return status;
    return std::unique_ptr<IQuery>(std::move(query));
}

Status Query::prepare(std::u16string_view text) {
    if (!statement_.get()) return session_->fault(Phase::Execute);
    if (text.size() > std::numeric_limits<SQLINTEGER>::max())
        return driver::failure(ErrorCode::BadQuery, u"The statement is too long.");
    session_->limit(statement_);
    if (!SQL_SUCCEEDED(SQLPrepareW(statement_.get(), units(text.data()),
                                   static_cast<SQLINTEGER>(text.size()))))
        return session_->fault(statement_, Phase::Prepare);
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumParams(statement_.get(), &count)))
        return session_->fault(statement_, Phase::Prepare);
    parameterCount_ = count;
    if (describe()) return {};
    // A driver that only now asks the server tells of a bad query here. Another one may just not
    // know the columns before the execution.
    Status status = session_->fault(statement_, Phase::Execute);
    return status.code == ErrorCode::Failed ? Status() : status;
}

bool Query::describe() {
    const bool known = describeColumns(statement_.get(), described_);
    columns_.clear();
    for (const Column& column : described_)
        columns_.push_back(column.name);
    return known;
}

Status Query::run(const std::vector<Value>& values) {
    rows_.clear();
    SQLFreeStmt(statement_.get(), SQL_CLOSE);
    Status status = session_->brokenTransaction();
    if (!status.ok()) return status;
    session_->limit(statement_);
    Parameters parameters(statement_.get());
    for (const Value& value : values) {
        if (value.real() && std::isinf(*value.real()))
            return driver::failure(ErrorCode::BadParameter, u"A parameter is infinite.");
        if (!parameters.add(value)) return session_->fault(statement_, Phase::Execute);
    }
    // "No data" is a change of no row.
    const SQLRETURN result = SQLExecute(statement_.get());
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        return session_->fault(statement_, Phase::Execute);
    if (!describe()) return session_->fault(statement_, Phase::Execute);
    status = described_.empty() ? Status() : fetch();
    if (status.ok()) status = finish();
    SQLFreeStmt(statement_.get(), SQL_CLOSE);
    return status;
}

Status Query::fetch() {
    while (true) {
        const SQLRETURN result = SQLFetch(statement_.get());
        if (result == SQL_NO_DATA) return {};
        Row row;
        if (!SQL_SUCCEEDED(result) || !readRow(statement_.get(), described_, row))
            return session_->fault(statement_, Phase::Execute);
        rows_.push_back(std::move(row));
    }
}

// Counts the changed rows and goes through what else the statement gave, such as the failure of a
// trigger.
Status Query::finish() {
    SQLLEN count = 0;
    if (described_.empty() && SQL_SUCCEEDED(SQLRowCount(statement_.get(), &count)))
        changedRows_ = std::max<std::int64_t>(count, 0);
    SQLRETURN result = SQL_SUCCESS;
    while (SQL_SUCCEEDED(result))
        result = SQLMoreResults(statement_.get());
    if (result == SQL_NO_DATA) return {};
    const std::vector<Diagnostic> records = diagnosticsOf(SQL_HANDLE_STMT, statement_.get());
    if (!records.empty() && records.front().state == kNoSuchFunction) return {};
    return session_->fault(statement_, Phase::Execute);
}

Outcome<bool> Query::advance(Row& row) {
    if (rows_.empty()) return false;
    row = std::move(rows_.front());
    rows_.pop_front();
    return true;
}

}  // namespace qor_db::odbc
