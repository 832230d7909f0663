#pragma once

#include <string>

namespace corvane::config {

/// The settings folder with its closing separator, made when it is missing; see
/// GetDataSettingsFolderPath.
std::u16string settingsFolder();

}  // namespace corvane::config
