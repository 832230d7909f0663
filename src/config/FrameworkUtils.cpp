#include "config/FrameworkUtils.h"

#include "config/SettingsFolder.h"

CStringW FrameworkUtils::GetDataSettingPath() const {
    return corvane::config::settingsFolder();
}

CStringW FrameworkUtils::GetConfigModuleFile() const {
    return corvane::config::settingsFolder() + u"ConfigModule.ini";
}
