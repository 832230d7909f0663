#include "settings/Settings.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

#include <corvane/app/Installation.h>
#include <corvane/config/ModuleConfiguration.h>
#include <corvane/database/IConnectorData.h>
#include <corvane/database/QORDataHelper.h>
#include <corvane/platform/Environment.h>

#include "Text.h"
#include "doctor/Places.h"
#include "language/Messages.h"
#include "settings/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace {

constexpr const char16_t* kDataVariable = u"CORVANE_DATA_DIR";
constexpr const char16_t* kDatabaseVariable = u"CORVANE_DATABASE_DIR";
constexpr const char* kFile = "ConfigModule.ini";
constexpr const char* kSeverities = "Severities.toml";
constexpr const char* kDatabase = "qorSqliteDb.dat";
constexpr const char* kDatabaseJournal = "qorSqliteDb.dat-journal";

CStringW textOf(const fs::path& path) {
    const std::u8string bytes = path.u8string();
    return CStringW::FromUtf8(std::string(bytes.begin(), bytes.end()));
}

/// `name` in the folder of a variable, else in one of the home folder. Nothing without either.
std::optional<fs::path> userFolder(const char16_t* variable, const char* inHome) {
    const fs::path folder = placeOf(CStringW(corvane::GetEnvironmentText(variable)));
    if (folder.is_absolute()) return folder / "corvane";
    const fs::path home = placeOf(CStringW(corvane::GetEnvironmentText(u"HOME")));
    if (!home.is_absolute()) return std::nullopt;
    return home / inHome / "corvane";
}

/// The library makes the folder of settings by itself, so only a file in it shows that somebody
/// has some.
bool hasSettings(const fs::path& folder) {
    std::error_code ignored;
    return fs::exists(folder / kFile, ignored) || fs::exists(folder / kSeverities, ignored);
}

fs::path settingsFolder() {
    return placeOf(shownPath(corvane::GetModuleConfiguration().settingsFolder));
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

std::optional<fs::path> userConfigurationFolder() {
    return userFolder(u"XDG_CONFIG_HOME", ".config");
}

void Settings::apply(const CStringW& data, const CStringW& scripts) {
    if (!data.IsEmpty()) corvane::SetEnvironmentText(kDataVariable, data);
    find();
    if (!scripts.IsEmpty()) {
        std::error_code ignored;
        if (!write(textOf(fs::weakly_canonical(placeOf(scripts), ignored))))
            throw std::runtime_error(
                trUtf8("--scripts takes a temporary folder, and none can be made; let TMPDIR name "
                       "a folder that can be written"));
    }
}

void Settings::find() {
    origin_ = SettingsOrigin::Named;
    if (!corvane::GetEnvironmentText(kDataVariable).empty()) return;
    origin_ = SettingsOrigin::User;
    const std::optional<fs::path> user = userConfigurationFolder();
    if (user && hasSettings(*user / "Settings"))
        return corvane::SetEnvironmentText(kDataVariable, textOf(*user));
    origin_ = SettingsOrigin::Machine;
    if (hasSettings(settingsFolder())) return;
    const CStringW examples = corvane::GetInstallation().installFolder + u"/examples/scripts";
    std::error_code ignored;
    const bool found = fs::exists(placeOf(shownPath(examples)) / "UserDefinedFile.xml", ignored) &&
                       write(shownPath(examples));
    origin_ = found ? SettingsOrigin::Examples : SettingsOrigin::None;
}

bool Settings::write(const CStringW& scripts) {
    const std::shared_ptr<const TemporaryFolder> folder = TemporaryFolder::make(
        {"Settings/ConfigModule.ini", "Settings/Severities.toml", "Settings"});
    if (!folder) return false;
    const fs::path former = settingsFolder();
    const fs::path settings = folder->path() / "Settings";
    std::error_code failed;
    fs::create_directory(settings, failed);
    if (fs::exists(former / kSeverities, failed))
        fs::copy_file(former / kSeverities, settings / kSeverities, failed);
    std::ofstream file(settings / kFile, std::ios::binary);
    // Of two equal keys the first one counts.
    file << "[RULE_SCRIPT_LOCATION]\ndirectory=" << scripts.ToUtf8() << "\n"
         << contentOf(former / kFile);
    file.close();
    if (!file) return false;
    corvane::SetEnvironmentText(kDataVariable, textOf(folder->path()));
    made_ = folder;
    return true;
}

void Settings::placeDatabase(bool mayMake) {
    const qor_db::ConfiguredDatabase database = qor_db::QORDataHelper::configured();
    if (database.type != qor_db::IConnectorData::DATABASETYPE_SQLITE || !database.isDefaultFile)
        return;
    const CStringW named(corvane::GetEnvironmentText(kDatabaseVariable));
    const CStringW file = shownPath(database.file);
    if (!named.IsEmpty() || presenceOfFile(file) != Presence::Missing || canBeMade(file)) return;
    std::optional<fs::path> folder = userFolder(u"XDG_DATA_HOME", ".local/share");
    std::error_code failed;
    if (folder && mayMake) fs::create_directories(*folder, failed);
    if (!folder || !isWritable(textOf(*folder / kDatabase))) {
        database_ = TemporaryFolder::make({kDatabase, kDatabaseJournal});
        if (!database_) return;
        folder = database_->path();
    }
    corvane::SetEnvironmentText(kDatabaseVariable, textOf(*folder) + u"/");
}
