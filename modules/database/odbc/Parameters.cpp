#include "Parameters.h"

#include <algorithm>

namespace qor_db::odbc {
namespace {

/// Lengths that every server takes for a plain column; what is longer goes as a long one.
constexpr SQLULEN kPlainUnits = 4000;
constexpr SQLULEN kPlainBytes = 8000;

// Drivers turn a lone surrogate into whatever they like; it goes as U+FFFD, as everywhere.
CStringW wellFormed(const CStringW& text) {
    const bool surrogates = std::any_of(text.View().begin(), text.View().end(), [](char16_t unit) {
        return unit >= 0xD800 && unit <= 0xDFFF;
    });
    return surrogates ? CStringW::FromUtf8(text.ToUtf8()) : text;
}

}  // namespace

bool Parameters::add(const Value& value) {
    ++index_;
    if (const std::int64_t* whole = value.integer())
        return bind(SQL_C_SBIGINT, SQL_BIGINT, 0, whole, sizeof *whole);
    if (const double* real = value.real())
        return bind(SQL_C_DOUBLE, SQL_DOUBLE, 0, real, sizeof *real);
    if (const CStringW* text = value.text()) return addText(*text);
    if (const Bytes* bytes = value.bytes()) {
        const SQLSMALLINT type = bytes->size() > kPlainBytes ? SQL_LONGVARBINARY : SQL_VARBINARY;
        return bind(SQL_C_BINARY, type, bytes->size(), bytes->data(),
                    static_cast<SQLLEN>(bytes->size()));
    }
    return addNull();
}

bool Parameters::addNull() {
    // Some servers turn null of one type into another only where they know the way.
    SQLSMALLINT type = SQL_VARCHAR;
    SQLULEN size = 1;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    if (!SQL_SUCCEEDED(SQLDescribeParam(statement_, index_, &type, &size, &digits, &nullable)))
        type = SQL_VARCHAR;
    return bind(SQL_C_DEFAULT, type, size, nullptr, SQL_NULL_DATA);
}

bool Parameters::addText(const CStringW& text) {
    const CStringW& sent = texts_.emplace_back(wellFormed(text));
    const SQLULEN length = sent.View().size();
    const SQLSMALLINT type = length > kPlainUnits ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
    return bind(SQL_C_WCHAR, type, length, sent.GetString(),
                static_cast<SQLLEN>(length * sizeof(char16_t)));
}

bool Parameters::bind(SQLSMALLINT valueType, SQLSMALLINT parameterType, SQLULEN size,
                      const void* data, SQLLEN bytes) {
    SQLLEN& length = lengths_.emplace_back(bytes);
    // The driver reads through the pointer, and some want one where there is nothing to read.
    const void* place = data ? data : &length;
    return SQL_SUCCEEDED(SQLBindParameter(
        statement_, index_, SQL_PARAM_INPUT, valueType, parameterType, std::max<SQLULEN>(size, 1),
        0, const_cast<void*>(place), bytes > 0 ? bytes : 0, &length));
}

}  // namespace qor_db::odbc
