#pragma once

#include <memory>

#include <corvane/base/Export.h>
#include <corvane/database/IConnectorData.h>
#include <corvane/text/CStringW.h>

namespace qor_db {

class IDatabaseCollector;

/// The connection that the configuration asks for now, whether it is open or not.
struct ConfiguredDatabase {
    IConnectorData::DATABASETYPE type = IConnectorData::DATABASETYPE_SQLITE;  ///< Kind of database.
    CStringW collectorModule;    ///< Where the collector module is expected, as Windows names it.
    CStringW driverModule;       ///< As the collector is told; empty when none is configured.
    CStringW file;               ///< The database file; empty for a server.
    bool isDefaultFile = false;  ///< No file is configured: `file` is the default one.
};

/// Finds and loads the database collector module, tells it which database to open and holds the
/// collector for the rule modules. There is one object in the process.
///
/// Nothing here reports an error: without the collector module the collector is null, and every
/// caller must be ready for that. The collector says whether the database itself could be opened
/// (IDatabaseCollector::status).
///
/// The connection is read from section RULE_DATABASE_MODULES of ConfigModule.ini in the settings
/// folder: DatabaseType ("MSSQL" in any case, else SQLite), module1 (the driver module),
/// ConnectionString (MSSQL) and FileName (SQLite). A value is cut to 259 units. module1 and
/// FileName may begin with an environment variable in percent signs: %NAME%/more. A variable that
/// is not set counts as empty, and so does every name of more than 49 units. Without module1 an
/// SQLite connection takes QorSqliteDatabaseu.dll beside the collector module; an MSSQL connection
/// has no default. "QORDatabaseu.dll", the collector module, is in the folder of this library. On
/// POSIX a module name means the shared object of its stem.
class CORVANE_EXPORT QORDataHelper {
public:
    /// The one object. The first call makes it and with it the connection; it must not race with a
    /// second one. The collector and its module are freed at the end of the process.
    static QORDataHelper& getInstance();

    /// Looks at the configuration without connecting, and makes no file and no folder.
    static ConfiguredDatabase configured();

    /// Not copied and not assigned: each copy would give the one collector back.
    QORDataHelper(const QORDataHelper&) = delete;
    QORDataHelper& operator=(const QORDataHelper&) = delete;

    /// Disconnects: gives the collector back to its module and frees the module.
    ~QORDataHelper();

    /// The collector, or null. This object owns it.
    operator IDatabaseCollector*();

    /// The database file that is used when none is configured: qorSqliteDb.dat in the folder that
    /// the environment variable CORVANE_DATABASE_DIR names, when that exists (it must end in a
    /// separator), else below the machine's common data folder. The file need not
    /// exist, and the argument is ignored.
    CStringW GetDefaultDatabase(const CStringW& unused);

    /// Connects by the MSSQL keys of this ConfigModule.ini. An earlier collector is not destroyed,
    /// since rule modules may hold it: it goes with its module.
    void ConnectMSSQL(const CStringW& configFile);
    /// Connects by the SQLite keys of this ConfigModule.ini, as ConnectMSSQL does.
    void ConnectSQLite(const CStringW& configFile);

private:
    QORDataHelper();

    struct Unconnected {};
    explicit QORDataHelper(Unconnected);
    std::unique_ptr<IConnectorData> makeConnector(const CStringW& configFile);
    std::unique_ptr<IConnectorData> makeMSSQLConnector(const CStringW& configFile);
    std::unique_ptr<IConnectorData> makeSQLiteConnector(const CStringW& configFile);

    void LoadDatabaseDll(CStringW& path);
    CStringW GetModuleFile(void* module);
    CStringW GetDefaultDatabaseDll();
    bool HasEnvVariable(const CStringW& text) const;
    CStringW ConvertToAbsolutePath(CStringW& text) const;
    void createCollector(const IConnectorData& connector);

    void* m_hDatabaseModule = nullptr;
    IDatabaseCollector* m_pCollector = nullptr;
};

}  // namespace qor_db
