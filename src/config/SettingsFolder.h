#pragma once

#include <string>

namespace corvane::config {

/// The settings folder with its closing separator, made when it is missing; see
/// GetDataSettingsFolderPath.
std::u16string settingsFolder();

/// The same path, with nothing made.
std::u16string settingsFolderPath();

}  // namespace corvane::config
