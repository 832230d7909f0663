#include "config/SettingsFolder.h"

#include <algorithm>

#include <corvane/config/DataFolders.h>

#include "system/Files.h"
#include "system/Paths.h"
#include "system/Process.h"

namespace corvane::config {
namespace {

std::u16string dataRoot() {
    std::u16string root =
        system::environmentVariable(u"CORVANE_DATA_DIR").value_or(std::u16string());
    if (!root.empty()) return root;
    return system::join(system::join(system::commonDataFolder(), u"TessalyLtd"), u"Corvane");
}

}  // namespace

std::u16string settingsFolderPath() {
    return system::join(system::join(dataRoot(), u"Settings"), {});
}

std::u16string settingsFolder() {
    std::u16string folder = settingsFolderPath();
    // The path is of use even where no folder can be made: reading finds nothing there.
    if (!system::pathExists(folder)) system::createFolders(folder);
    return folder;
}

}  // namespace corvane::config

QorLong GetDataSettingsFolderPath(char16_t* buffer, const QorLong* size) {
    const std::u16string folder = corvane::config::settingsFolder();
    const auto length = static_cast<QorLong>(folder.size());
    if (buffer && size && *size > length) std::copy_n(folder.c_str(), folder.size() + 1, buffer);
    return length;
}
