#pragma once

// The interface of the driver manager: https://learn.microsoft.com/sql/odbc/reference
// On Windows its headers need the types of the system before them.
// clang-format off
#include <corvane/base/Platform.h>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
// clang-format on

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

namespace qor_db::odbc {

/// Text as the driver manager takes it, which does not write to it.
inline SQLWCHAR* units(const char16_t* text) {
    return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text));
}

/// A number as the driver manager takes it where a pointer may be too.
inline SQLPOINTER number(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value);  // NOLINT(performance-no-int-to-ptr)
}

/// A handle of the driver manager, freed with this object.
template <SQLSMALLINT Type>
class Handle {
public:
    explicit Handle(SQLHANDLE parent) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(Type, parent, &handle_))) handle_ = SQL_NULL_HANDLE;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (handle_) SQLFreeHandle(Type, handle_);
    }

    /// Null when the driver manager gave none.
    SQLHANDLE get() const { return handle_; }

private:
    SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

using StatementHandle = Handle<SQL_HANDLE_STMT>;

}  // namespace qor_db::odbc
