#include <exception>

#include <corvane/config/ModuleConfiguration.h>
#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/MSSQLConnectorData.h>
#include <corvane/database/QORDataHelper.h>
#include <corvane/database/SQLLiteConnectorData.h>

#include "config/DataFolders.h"
#include "database/DatabasePath.h"
#include "emulation/Profile.h"
#include "system/Modules.h"
#include "system/Paths.h"

namespace qor_db {
namespace {

using namespace corvane;

constexpr const char16_t* kCollectorModule = u"QORDatabaseu.dll";
constexpr const char16_t* kDefaultDriver = u"QorSqliteDatabaseu.dll";
constexpr std::size_t kValueCapacity = 260;

CStringW besideFile(std::u16string_view file, const char16_t* name) {
    return system::join(system::parentFolder(file), name);
}

CStringW databaseSetting(const char16_t* key, const CStringW& configFile) {
    return emulation::profileText(configuration::kDatabaseSection, key, configFile, kValueCapacity);
}

}  // namespace

QORDataHelper& QORDataHelper::getInstance() {
    static QORDataHelper instance;
    return instance;
}

QORDataHelper::QORDataHelper(Unconnected) {
    CStringW modulePath;
    LoadDatabaseDll(modulePath);
    m_hDatabaseModule = system::loadModule(modulePath);
}

QORDataHelper::QORDataHelper() : QORDataHelper(Unconnected{}) {
    createCollector(*makeConnector(FrameworkUtils().GetConfigModuleFile()));
}

ConfiguredDatabase QORDataHelper::configured() {
    QORDataHelper helper{Unconnected{}};
    const CStringW configFile = GetModuleConfiguration().file;
    const std::unique_ptr<IConnectorData> connector = helper.makeConnector(configFile);
    ConfiguredDatabase database{.type = connector->type(),
                                .collectorModule = {},
                                .driverModule = connector->modulePath(),
                                .file = {}};
    helper.LoadDatabaseDll(database.collectorModule);
    if (const auto* sqlite = dynamic_cast<const SQLLiteConnectorData*>(connector.get())) {
        database.file = sqlite->databaseFile();
        database.isDefaultFile =
            databaseSetting(configuration::kDatabaseFile, configFile).IsEmpty();
    }
    return database;
}

QORDataHelper::~QORDataHelper() {
    const auto destroy =
        system::moduleFunction<DestroyCollectorFunction>(m_hDatabaseModule, kDestroyCollectorName);
    try {
        if (m_pCollector && destroy) destroy(&m_pCollector);
    } catch (...) {
        m_pCollector = nullptr;
    }
    system::freeModule(m_hDatabaseModule);
    m_hDatabaseModule = nullptr;
}

QORDataHelper::operator IDatabaseCollector*() {
    return m_pCollector;
}

CStringW QORDataHelper::GetDefaultDatabase(const CStringW&) {
    return database::defaultDatabaseFile();
}

void QORDataHelper::ConnectMSSQL(const CStringW& configFile) {
    createCollector(*makeMSSQLConnector(configFile));
}

void QORDataHelper::ConnectSQLite(const CStringW& configFile) {
    createCollector(*makeSQLiteConnector(configFile));
}

// A file that is not there says the same as one without keys.
std::unique_ptr<IConnectorData> QORDataHelper::makeConnector(const CStringW& configFile) {
    const bool server =
        databaseSetting(configuration::kDatabaseType, configFile).CompareNoCase(u"MSSQL") == 0;
    return server ? makeMSSQLConnector(configFile) : makeSQLiteConnector(configFile);
}

std::unique_ptr<IConnectorData> QORDataHelper::makeMSSQLConnector(const CStringW& configFile) {
    CStringW dllModuleName = databaseSetting(configuration::kDriverModule, configFile);
    if (HasEnvVariable(dllModuleName)) ConvertToAbsolutePath(dllModuleName);
    return std::make_unique<MSSQLConnectorData>(
        dllModuleName, databaseSetting(configuration::kConnectionString, configFile));
}

std::unique_ptr<IConnectorData> QORDataHelper::makeSQLiteConnector(const CStringW& configFile) {
    CStringW dllModuleName = databaseSetting(configuration::kDriverModule, configFile);
    if (dllModuleName.IsEmpty()) {
        dllModuleName = GetDefaultDatabaseDll();
    } else if (HasEnvVariable(dllModuleName)) {
        ConvertToAbsolutePath(dllModuleName);
    }
    CStringW strDatabasePath = databaseSetting(configuration::kDatabaseFile, configFile);
    if (strDatabasePath.IsEmpty()) {
        strDatabasePath = GetDefaultDatabase(strDatabasePath);
    } else if (HasEnvVariable(strDatabasePath)) {
        ConvertToAbsolutePath(strDatabasePath);
    }
    return std::make_unique<SQLLiteConnectorData>(dllModuleName, strDatabasePath);
}

void QORDataHelper::LoadDatabaseDll(CStringW& path) {
    path = besideFile(system::ownModuleFile(), kCollectorModule);
}

CStringW QORDataHelper::GetModuleFile(void* module) {
    return system::moduleFile(module);
}

CStringW QORDataHelper::GetDefaultDatabaseDll() {
    return besideFile(GetModuleFile(m_hDatabaseModule), kDefaultDriver);
}

bool QORDataHelper::HasEnvVariable(const CStringW& text) const {
    return text.Find(u'%') >= 0;
}

CStringW QORDataHelper::ConvertToAbsolutePath(CStringW& text) const {
    return text = database::expandVariable(text);
}

void QORDataHelper::createCollector(const IConnectorData& connector) {
    const auto create =
        system::moduleFunction<CreateCollectorFunction>(m_hDatabaseModule, kCreateCollectorName);
    if (!create) return;
    // What a module throws is caught here, because its type may lie in that module, which this
    // object keeps loaded.
    IDatabaseCollector* made = m_pCollector;
    try {
        create(&connector, &made);
    } catch (...) {
        // The unwinding of a thread that is cancelled is no exception of C++, and nothing may stop
        // it.
        if (!std::current_exception()) throw;
        return;
    }
    m_pCollector = made;
}

}  // namespace qor_db
