#pragma once

#include <deque>
#include <string>
#include <vector>

#include <corvane/database/Row.h>

#include "Odbc.h"

namespace qor_db::odbc {

/// The parameters of one execution, bound to its statement. The values must live as long.
class Parameters {
public:
    explicit Parameters(SQLHANDLE statement) : statement_(statement) {}
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;
    ~Parameters() { SQLFreeStmt(statement_, SQL_RESET_PARAMS); }

    /// Binds the next parameter; false when the driver refuses it.
    bool add(const Value& value);

private:
    bool addNull();
    bool addText(const CStringW& text);
    bool bind(SQLSMALLINT valueType, SQLSMALLINT parameterType, SQLULEN size, const void* data,
              SQLLEN bytes);

    SQLHANDLE statement_;
    SQLUSMALLINT index_ = 0;
    std::deque<SQLLEN> lengths_;
    std::deque<CStringW> texts_;
};

}  // namespace qor_db::odbc
