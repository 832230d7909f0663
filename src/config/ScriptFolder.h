#pragma once

#include <optional>

#include <corvane/text/CStringW.h>

namespace corvane::config {

/// The folder of the user-defined rules: the record "directory" of section RULE_SCRIPT_LOCATION in
/// ConfigModule.ini, as it stands there. Nothing when there is no such record. The file is read
/// afresh, once, at each call.
std::optional<CStringW> scriptFolder();
/// The same of another file.
std::optional<CStringW> scriptFolder(const CStringW& configFile);

}  // namespace corvane::config
