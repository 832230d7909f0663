#include "Tables.h"

#include "Columns.h"

namespace qor_db::odbc {

Outcome<std::vector<CStringW>> tableNames(Session& session, const char16_t* pattern) {
    constexpr std::size_t kNameColumn = 2;
    const StatementHandle statement(session.handle());
    if (!statement.get()) return session.fault(Phase::Execute);
    session.limit(statement);
    std::vector<Column> columns;
    if (!SQL_SUCCEEDED(SQLTablesW(statement.get(), nullptr, 0, nullptr, 0, units(pattern), SQL_NTS,
                                  units(u"TABLE"), SQL_NTS)) ||
        !describeColumns(statement.get(), columns))
        return session.fault(statement, Phase::Execute);
    std::vector<CStringW> names;
    while (true) {
        const SQLRETURN result = SQLFetch(statement.get());
        if (result == SQL_NO_DATA) return names;
        Row row;
        if (!SQL_SUCCEEDED(result) || !readRow(statement.get(), columns, row))
            return session.fault(statement, Phase::Execute);
        names.push_back(row.text(kNameColumn));
    }
}

}  // namespace qor_db::odbc
