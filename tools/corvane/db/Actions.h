#pragma once

#include <string_view>

#include <corvane/database/IDatabaseCollector.h>

#include "Console.h"

// What `corvane db` does with a collector. Each gives the exit status.

/// Shows the connection and what became of it.
int showConnection(qor_db::IDatabaseCollector& collector, Console& console);
/// Makes or upgrades the reference tables.
int installTables(qor_db::IDatabaseCollector& collector, Console& console);
/// Runs a statement that reads, and prints at most `limit` rows.
int runQuery(qor_db::IDatabaseCollector& collector, std::u16string_view statement, int limit,
             Console& console);

/// Reports what went wrong. The exit status is kUnusable for what is wrong with the user's words.
int reportStatus(const qor_db::Status& status, Console& console);
