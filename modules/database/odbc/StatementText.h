#pragma once

#include <string_view>

#include <corvane/database/Status.h>

namespace qor_db::odbc {

/// The one statement of a text, without the semicolon that may end it. An error for none, for
/// several, since drivers run them all, and for one that begins or ends a transaction.
///
/// Quotes, names in brackets and comments are known; a text that another dialect reads differently
/// is refused rather than let through. Statements that follow each other without a semicolon are
/// not told apart.
Outcome<std::u16string_view> oneStatement(std::u16string_view text);

}  // namespace qor_db::odbc
