#pragma once

#include <string_view>
#include <vector>

#include <corvane/database/IDatabaseDriver.h>

namespace collector {

/// Prepares a statement and runs it once.
qor_db::Status executeOnce(qor_db::IDatabaseConnection& database, std::u16string_view statement,
                           const std::vector<qor_db::Value>& parameters);

}  // namespace collector
