#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <corvane/config/ModuleConfiguration.h>

#include "config/CIniFile.h"
#include "config/DataFolders.h"
#include "emulation/Profile.h"
#include "system/Files.h"
#include "system/Unicode.h"

namespace corvane {
namespace {

bool beginsWithMark(std::string_view text) {
    return text.starts_with("\xEF\xBB\xBF") || text.starts_with("\xFF\xFE") ||
           text.starts_with("\xFE\xFF");
}

void readEntries(ModuleConfiguration& configuration, std::string_view text) {
    config::IniReader reader(text);
    while (const std::optional<config::IniRecord> record = reader.next()) {
        if (record->isHeading()) continue;
        configuration.entries.push_back({system::widen(record->Section), system::widen(record->Key),
                                         system::widen(record->Value), record->Commented != ' '});
    }
}

void readDatabaseKeys(ModuleConfiguration& configuration) {
    using configuration::kDatabaseSection;
    constexpr std::size_t kWhole = std::numeric_limits<std::size_t>::max();
    for (const char16_t* key : configuration::kDatabaseKeys) {
        CStringW value = emulation::profileText(kDatabaseSection, key, configuration.file, kWhole);
        if (!value.IsEmpty())
            configuration.databaseKeys.push_back({kDatabaseSection, key, std::move(value), false});
    }
}

}  // namespace

std::optional<CStringW> GetScriptFolder() {
    return config::scriptFolder();
}

ModuleConfiguration GetModuleConfiguration() {
    ModuleConfiguration configuration;
    configuration.settingsFolder = config::settingsFolderPath();
    configuration.file = configuration.settingsFolder + configuration::kFile;
    const std::optional<std::string> text =
        system::readFile(configuration.file, config::kLargestIniFile);
    if (!text) return configuration;
    configuration.readable = true;
    configuration.scriptFolder = config::scriptFolder(configuration.file);
    configuration.byteOrderMark = beginsWithMark(*text);
    configuration.cutLine = system::widen(text->substr(text->rfind('\n') + 1));
    readEntries(configuration, *text);
    readDatabaseKeys(configuration);
    return configuration;
}

}  // namespace corvane
