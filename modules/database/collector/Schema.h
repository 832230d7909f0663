#pragma once

#include <corvane/database/IDatabaseDriver.h>

namespace collector {

/// The version of the reference tables that this release makes and reads.
inline constexpr int kSchemaVersion = 2;

/// Brings the tables from the version that they have to kSchemaVersion. Each step is one
/// transaction together with its version number, so that whatever ends the process leaves the
/// tables at one version or the next.
qor_db::Status upgradeSchema(qor_db::IDatabaseConnection& database);

}  // namespace collector
