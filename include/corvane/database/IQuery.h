#pragma once

#include <cstdint>
#include <vector>

#include <corvane/database/Row.h>
#include <corvane/database/Status.h>

namespace qor_db {

/// A prepared query. Its owner deletes it; until then it keeps its connection, also when the
/// collector has opened another one or is gone. Read a result to its end or delete the query: one
/// that is half read can keep others from writing. A call that runs for longer than a minute ends
/// with ErrorCode::TimedOut. Execute it as often as needed, each time with fresh parameters:
///
///     for (Status status = query.execute({u"M6"}); query.next();) use(query.row());
///     if (!query.status().ok()) ...
class IQuery {
public:
    virtual ~IQuery() = default;

    /// How many parameters ("?") the query has.
    virtual int parameterCount() const noexcept = 0;

    /// Runs the query from the start with these parameters, one for each "?" in their order. A
    /// query without result rows has done its work when this returns.
    virtual Status execute(const std::vector<Value>& parameters) = 0;

    /// Goes to the next row, at first to the first one. False after the last row, before the
    /// first execute, and when reading fails, which status() tells.
    virtual bool next() = 0;

    /// The row that next() went to, valid until the next call on this object.
    virtual const Row& row() const noexcept = 0;

    /// Names of the result's columns; empty for a query without result rows.
    virtual const std::vector<CStringW>& columns() const noexcept = 0;

    /// How many rows the last execute inserted, changed or deleted; 0 for a query that reads.
    virtual std::int64_t changedRows() const noexcept = 0;

    /// The status of the last execute or next.
    virtual const Status& status() const noexcept = 0;

    /// True when the database promises that the query changes nothing. False also where it cannot
    /// tell, as on a server.
    virtual bool onlyReads() const noexcept = 0;
};

}  // namespace qor_db
