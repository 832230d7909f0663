#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Command.h"
#include "Table.h"
#include "db/Actions.h"
#include "db/Statement.h"
#include "language/Messages.h"

using qor_db::ErrorCode;
using qor_db::IQuery;
using qor_db::Status;
using qor_db::Value;

namespace {

constexpr std::size_t kWidestValue = 200;
constexpr std::size_t kMostBytes = 32;

CStringW textOf(const qor_db::Bytes& bytes) {
    CStringW text = u"x'";
    for (std::size_t i = 0; i < std::min(bytes.size(), kMostBytes); ++i)
        text.AppendFormat(u"%02X", std::to_integer<unsigned>(bytes[i]));
    if (bytes.size() > kMostBytes) return text + u"\u2026";
    return text + u"'";
}

CStringW textOf(const Value& value) {
    CStringW text = u"NULL";
    if (const std::int64_t* whole = value.integer()) text.Format(u"%d", *whole);
    if (const double* real = value.real()) text.Format(u"%.15g", *real);
    if (const CStringW* own = value.text()) return *own;
    if (const qor_db::Bytes* bytes = value.bytes()) return textOf(*bytes);
    return text;
}

Table::Row shownRow(const qor_db::Row& row, std::size_t columns) {
    Table::Row shown;
    for (std::size_t i = 0; i + 1 < columns; ++i)
        shown.cells.push_back(textOf(row[i]));
    shown.lines.push_back(textOf(row[columns - 1]));
    return shown;
}

int printRows(IQuery& query, int limit, Console& console) {
    Table table(query.columns(), kWidestValue);
    int count = 0;
    for (; count < limit && query.next(); ++count)
        table.add(shownRow(query.row(), query.columns().size()));
    const bool more = count == limit && query.next();
    if (!query.status().ok()) return reportStatus(query.status(), console);
    table.print(console);
    console.endLine();
    console.writeLine(more ? trCount({"the first {0} row; --limit takes more",
                                      "the first {0} rows; --limit takes more"},
                                     count)
                           : trCount({"{0} row", "{0} rows"}, count));
    return kGood;
}

Status readingOnly() {
    return {ErrorCode::BadQuery,
            tr("only one statement that reads is run: SELECT, WITH, VALUES or EXPLAIN"), 0};
}

}  // namespace

int runQuery(qor_db::IDatabaseCollector& collector, std::u16string_view statement, int limit,
             Console& console) {
    if (!isReadingStatement(statement)) return reportStatus(readingOnly(), console);
    const qor_db::Outcome<std::unique_ptr<IQuery>> query = collector.prepare(statement);
    if (!query.ok()) return reportStatus(query.status(), console);
    // A transaction locks, so it is for what may change something in spite of its first word: that
    // is taken back at the end.
    std::optional<qor_db::Transaction> transaction;
    if (!(*query)->onlyReads()) transaction.emplace(collector);
    if (transaction && !transaction->status().ok() &&
        transaction->status().code != ErrorCode::ReadOnly)
        return reportStatus(transaction->status(), console);
    const Status status = (*query)->execute({});
    if (!status.ok()) return reportStatus(status, console);
    if ((*query)->columns().empty()) return reportStatus(readingOnly(), console);
    return printRows(**query, limit, console);
}
