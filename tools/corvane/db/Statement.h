#pragma once

#include <string_view>

/// True for one statement whose first word is one that reads: SELECT, WITH, VALUES or EXPLAIN.
/// Nothing but blanks may follow a semicolon, in quotes too: a guard against mistakes need
/// not know the language of every database.
bool isReadingStatement(std::u16string_view statement);
