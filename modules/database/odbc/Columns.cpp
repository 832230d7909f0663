#include "Columns.h"

#include <algorithm>
#include <string>
#include <utility>

namespace qor_db::odbc {
namespace {

constexpr std::size_t kFirstPiece = 1024;
constexpr std::size_t kMostPiece = std::size_t{1} << 20;
/// Digits that fit into 64 bits.
constexpr SQLULEN kWholeDigits = 18;

Column::Kind kindOf(SQLSMALLINT type, SQLULEN digits, SQLSMALLINT scale) {
    switch (type) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            return Column::Kind::Whole;
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
            return Column::Kind::Real;
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return scale == 0 && digits <= kWholeDigits ? Column::Kind::Whole : Column::Kind::Real;
        case SQL_BINARY:
        case SQL_VARBINARY:
        case SQL_LONGVARBINARY:
            return Column::Kind::Bytes;
        default:
            return Column::Kind::Text;
    }
}

// A value of fixed size. False when the driver fails.
template <typename Number>
bool readNumber(SQLHANDLE statement, SQLUSMALLINT column, SQLSMALLINT type, Value& value) {
    Number number{};
    SQLLEN length = 0;
    if (!SQL_SUCCEEDED(SQLGetData(statement, column, type, &number, sizeof number, &length)))
        return false;
    if (length != SQL_NULL_DATA) value = Value(number);
    return true;
}

// A value of any length, by pieces. `spare` units at the end of a piece are the driver's own zero.
template <typename Result, typename Sequence>
bool readLong(SQLHANDLE statement, SQLUSMALLINT column, SQLSMALLINT type, std::size_t spare,
              Value& value) {
    using Unit = typename Sequence::value_type;
    Sequence all;
    Sequence piece(kFirstPiece, Unit{});
    while (true) {
        SQLLEN length = 0;
        const SQLRETURN result =
            SQLGetData(statement, column, type, piece.data(),
                       static_cast<SQLLEN>(piece.size() * sizeof(Unit)), &length);
        if (result == SQL_NO_DATA) break;
        if (!SQL_SUCCEEDED(result)) return false;
        if (length == SQL_NULL_DATA) return true;
        const std::size_t room = piece.size() - spare;
        const bool more = length < 0 || static_cast<std::size_t>(length) > room * sizeof(Unit);
        const std::size_t count = more ? room : static_cast<std::size_t>(length) / sizeof(Unit);
        all.insert(all.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
        if (!more || result == SQL_SUCCESS) break;
        piece.resize(std::min(piece.size() * 2, kMostPiece));
    }
    value = Value(Result(std::move(all)));
    return true;
}

bool readValue(SQLHANDLE statement, SQLUSMALLINT column, Column::Kind kind, Value& value) {
    switch (kind) {
        case Column::Kind::Whole:
            return readNumber<std::int64_t>(statement, column, SQL_C_SBIGINT, value);
        case Column::Kind::Real:
            return readNumber<double>(statement, column, SQL_C_DOUBLE, value);
        case Column::Kind::Bytes:
            return readLong<Bytes, Bytes>(statement, column, SQL_C_BINARY, 0, value);
        case Column::Kind::Text:
            return readLong<CStringW, std::u16string>(statement, column, SQL_C_WCHAR, 1, value);
    }
    return false;
}

}  // namespace

bool describeColumns(SQLHANDLE statement, std::vector<Column>& columns) {
    columns.clear();
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(statement, &count))) return false;
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        char16_t name[256] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLSMALLINT scale = 0;
        SQLSMALLINT nullable = 0;
        if (!SQL_SUCCEEDED(SQLDescribeColW(statement, static_cast<SQLUSMALLINT>(i), units(name),
                                           std::size(name) - 1, &length, &type, &size, &scale,
                                           &nullable)))
            return false;
        columns.push_back({name, kindOf(type, size, scale)});
    }
    return true;
}

bool readRow(SQLHANDLE statement, const std::vector<Column>& columns, Row& row) {
    std::vector<Value> values(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!readValue(statement, static_cast<SQLUSMALLINT>(i + 1), columns[i].kind, values[i]))
            return false;
    }
    row = Row(std::move(values));
    return true;
}

}  // namespace qor_db::odbc
