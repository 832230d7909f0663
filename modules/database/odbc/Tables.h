#pragma once

#include <memory>
#include <vector>

#include "Session.h"

namespace qor_db::odbc {

/// The names of the tables that fit a pattern, system tables left out.
Outcome<std::vector<CStringW>> tableNames(Session& session, const char16_t* pattern);

}  // namespace qor_db::odbc
