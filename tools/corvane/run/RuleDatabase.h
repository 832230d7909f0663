#pragma once

#include <string>

#include "files/LoadedRule.h"

namespace qor_db {
class IDatabaseCollector;
}

/// The rule database as far as the rules of a worker need one. Opening it makes its file, so it is
/// opened only when one is configured or there, or for a script that names its table `db`.
class RuleDatabase {
public:
    /// Null without a database.
    qor_db::IDatabaseCollector* forRule(const LoadedRule& loaded);

    /// Kind and version of the tables of a database that was opened: "SQLite, tables 2". Empty
    /// without one.
    std::string description() const;

private:
    bool isWanted(const LoadedRule& loaded);

    bool wanted_ = false;
    bool asked_ = false;
    qor_db::IDatabaseCollector* collector_ = nullptr;
};

/// Makes an empty file where the default database is missing, so that every rule gets it. Nothing
/// changes where a database is configured.
void makeDatabaseFile();

/// The script names the table through which a script looks things up.
bool namesDatabase(const CStringW& scriptPath);

/// What decides which rows a rule is given: the hash of the database's file, or its kind for a
/// server, of which nobody can tell whether it changed.
struct DatabaseState {
    bool isServer = false;
    std::string identity;
};
DatabaseState databaseState();
