#pragma once

#include <corvane/text/CStringW.h>

namespace corvane::database {

/// `text` with the variable at its start replaced: "%NAME%rest" is the value of NAME and the rest.
/// The name is between the first unit, whatever that is, and the last "%"; it counts as 8-bit
/// text, each unit cut to its low byte. A variable that is not set is empty, and so is one with a
/// name of more than 49 units. A text without "%" is unchanged.
CStringW expandVariable(const CStringW& text);

/// The database file when none is configured; see qor_db::QORDataHelper::GetDefaultDatabase.
CStringW defaultDatabaseFile();

}  // namespace corvane::database
