#pragma once

#include <corvane/database/IDatabaseDriver.h>

namespace collector {

/// Inserts the reference data that this release carries, as part of the open transaction.
qor_db::Status insertSeed(qor_db::IDatabaseConnection& database);

}  // namespace collector
