#pragma once

#include <memory>

#include <corvane/database/IDatabaseDriver.h>

#include "Database.h"

namespace qor_db::sqlite {

/// Opens the file that the request names, hardened against what a hostile file may hold, and reads
/// enough of it to tell that it is a database.
Outcome<std::shared_ptr<Database>> openDatabase(const OpenRequest& request);

}  // namespace qor_db::sqlite
