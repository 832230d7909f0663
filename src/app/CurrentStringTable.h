#pragma once

#include <corvane/app/StringTable.h>

namespace corvane::app {

/// The calling thread's current table, which is that of the library's own resource module where
/// none has been set; null without that module.
const StringTable* currentStringTable();

}  // namespace corvane::app
