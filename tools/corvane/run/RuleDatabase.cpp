#include "run/RuleDatabase.h"

#include <filesystem>
#include <fstream>

#include <corvane/config/ModuleConfiguration.h>
#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/QORDataHelper.h>

#include "Text.h"
#include "run/Hash.h"

namespace {

namespace fs = std::filesystem;
using qor_db::ConfiguredDatabase;
using qor_db::IConnectorData;
using qor_db::QORDataHelper;

/// The library runs no script that is larger.
constexpr std::uintmax_t kLargestScript = 256 << 20;

bool isConfiguredOrThere() {
    const ConfiguredDatabase configured = QORDataHelper::configured();
    if (configured.type != IConnectorData::DATABASETYPE_SQLITE || !configured.isDefaultFile)
        return true;
    std::error_code status;
    return fs::exists(shownPath(configured.file).Std(), status);
}

bool isWordUnit(char unit) {
    return (unit >= '0' && unit <= '9') || (unit >= 'A' && unit <= 'Z') ||
           (unit >= 'a' && unit <= 'z') || unit == '_';
}

}  // namespace

bool namesDatabase(const CStringW& scriptPath) {
    const fs::path path(shownPath(scriptPath).Std());
    std::error_code status;
    // What is no regular file has no size.
    const std::uintmax_t size = fs::file_size(path, status);
    if (status || size > kLargestScript) return false;
    std::string text(size, '\0');
    std::ifstream(path, std::ios::binary).read(text.data(), static_cast<std::streamsize>(size));
    for (std::size_t at = text.find("db"); at != text.npos; at = text.find("db", at + 1)) {
        const bool begins = at == 0 || !isWordUnit(text[at - 1]);
        const bool ends = at + 2 == text.size() || !isWordUnit(text[at + 2]);
        if (begins && ends) return true;
    }
    return false;
}

bool RuleDatabase::isWanted(const LoadedRule& loaded) {
    if (!asked_) wanted_ = isConfiguredOrThere();
    asked_ = true;
    if (wanted_ || !loaded.isScript()) return wanted_;
    std::optional<CStringW> folder = loaded.scriptFolder;
    if (folder->IsEmpty()) folder = corvane::GetScriptFolder();
    wanted_ = folder && namesDatabase(*folder + u"/" + loaded.rule->m_csRuleFileName);
    // An engine in Lua may ask for it as well.
    for (const CStringW& engine : loaded.rule->m_lstEngines)
        wanted_ =
            wanted_ ||
            namesDatabase(CStringW(fs::path(engine.Std()).replace_extension(".lua").u16string()));
    return wanted_;
}

void makeDatabaseFile() {
    const ConfiguredDatabase configured = QORDataHelper::configured();
    if (configured.type != IConnectorData::DATABASETYPE_SQLITE || !configured.isDefaultFile) return;
    const fs::path file(shownPath(configured.file).Std());
    std::error_code status;
    if (fs::exists(file, status)) return;
    fs::create_directories(file.parent_path(), status);
    // An empty file is one that the database fills.
    const std::ofstream made(file, std::ios::app);
}

qor_db::IDatabaseCollector* RuleDatabase::forRule(const LoadedRule& loaded) {
    if (!collector_ && isWanted(loaded)) collector_ = QORDataHelper::getInstance();
    return collector_;
}

std::string RuleDatabase::description() const {
    if (!collector_) return {};
    const qor_db::ConnectionInfo info = collector_->connection();
    std::string text = info.type == IConnectorData::DATABASETYPE_SQLITE ? "SQLite" : "MSSQL";
    if (!info.open) return text + ", not open";
    return text + ", tables " + std::to_string(info.schemaVersion);
}

DatabaseState databaseState() {
    const ConfiguredDatabase configured = QORDataHelper::configured();
    if (configured.type != IConnectorData::DATABASETYPE_SQLITE) return {true, "server"};
    DatabaseState state;
    const std::string file = fs::path(shownPath(configured.file).Std()).string();
    // Changes that are not in the file itself yet are in the one beside it.
    for (const char* ending : {"", "-wal"}) {
        const std::optional<FileHash> hash = hashFile(file + ending);
        state.identity += hash ? hash->sha256 : "none";
        state.identity += ' ';
    }
    return state;
}
