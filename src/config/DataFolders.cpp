#include "config/DataFolders.h"

#include <algorithm>
#include <mutex>

#include <corvane/config/DataFolders.h>
#include <corvane/config/ModuleConfiguration.h>

#include "config/CIniFile.h"
#include "system/FileState.h"
#include "system/Files.h"
#include "system/Lasting.h"
#include "system/Paths.h"
#include "system/Process.h"
#include "system/Unicode.h"

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

namespace {

// What ConfigModule.ini said when it was last read.
struct ScriptFolder {
    explicit ScriptFolder(const CStringW& path)
        : file(path, kLargestIniFile), folder(scriptFolder(path)) {}

    system::FileState file;
    std::optional<CStringW> folder;
};

}  // namespace

std::optional<CStringW> scriptFolder() {
    static std::mutex mutex;
    static system::Lasting<std::optional<ScriptFolder>> lasting;
    const CStringW file = settingsFolderPath() + configuration::kFile;
    const std::lock_guard lock(mutex);
    std::optional<ScriptFolder>& known = lasting.get();
    if (!known || !known->file.isCurrent(file)) known.emplace(file);
    // Where the file is, the folder is too.
    if (!known->file.exists()) settingsFolder();
    return known->folder;
}

std::optional<CStringW> scriptFolder(const CStringW& configFile) {
    const std::string file = system::narrow(configFile);
    const IniRecords found =
        CIniFile().GetRecord(system::narrow(configuration::kScriptFolder),
                             system::narrow(configuration::kScriptSection), file);
    if (found.empty()) return std::nullopt;
    return CStringW(system::widen(found.front().Value));
}

}  // namespace corvane::config

CStringW FrameworkUtils::GetDataSettingPath() const {
    return corvane::config::settingsFolder();
}

CStringW FrameworkUtils::GetConfigModuleFile() const {
    return corvane::config::settingsFolder() + corvane::configuration::kFile;
}

QorLong GetDataSettingsFolderPath(char16_t* buffer, const QorLong* size) {
    const std::u16string folder = corvane::config::settingsFolder();
    const auto length = static_cast<QorLong>(folder.size());
    if (buffer && size && *size > length) std::copy_n(folder.c_str(), folder.size() + 1, buffer);
    return length;
}
