#pragma once

#include <corvane/text/CStringW.h>

/// The way to the settings folder and ConfigModule.ini, for the length of a function.
class FrameworkUtils {
public:
    /// The settings folder with its closing separator; see GetDataSettingsFolderPath. Empty when
    /// there is none.
    CStringW GetDataSettingPath() const;

    /// The path of ConfigModule.ini in that folder, whether the file exists or not.
    CStringW GetConfigModuleFile() const;
};
