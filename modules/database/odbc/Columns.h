#pragma once

#include <vector>

#include <corvane/database/Row.h>

#include "Odbc.h"

namespace qor_db::odbc {

/// A column of a result.
struct Column {
    enum class Kind { Whole, Real, Text, Bytes };

    CStringW name;
    Kind kind = Kind::Text;
};

/// The columns of a prepared or executed statement; false when the driver does not tell.
bool describeColumns(SQLHANDLE statement, std::vector<Column>& columns);

/// Reads the row that the statement is at; false when the driver fails.
bool readRow(SQLHANDLE statement, const std::vector<Column>& columns, Row& row);

}  // namespace qor_db::odbc
