#pragma once

#include <optional>
#include <string>

#include <corvane/text/CStringW.h>

namespace corvane::config {

/// The settings folder with its closing separator, made when it is missing; see
/// GetDataSettingsFolderPath.
std::u16string settingsFolder();

/// The same path, with nothing made.
std::u16string settingsFolderPath();

/// The folder of the user-defined rules: the record "directory" of section RULE_SCRIPT_LOCATION in
/// ConfigModule.ini, as written. Nothing when there is no such record. The file is looked at for
/// each call, and read when it has changed. Safe on any thread.
std::optional<CStringW> scriptFolder();
/// The same of another file, which is read for each call.
std::optional<CStringW> scriptFolder(const CStringW& configFile);

}  // namespace corvane::config

/// The way to the settings folder and ConfigModule.ini, for the length of a function.
class FrameworkUtils {
public:
    /// The settings folder with its closing separator; see GetDataSettingsFolderPath. Empty when
    /// there is none.
    CStringW GetDataSettingPath() const;

    /// The path of ConfigModule.ini in that folder, whether the file exists or not.
    CStringW GetConfigModuleFile() const;
};
