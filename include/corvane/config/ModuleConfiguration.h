#pragma once

#include <optional>
#include <vector>

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// The names of the configuration: its file in the settings folder, the sections and their keys.
namespace configuration {

inline constexpr const char16_t* kFile = u"ConfigModule.ini";  ///< The file.

inline constexpr const char16_t* kScriptSection =
    u"RULE_SCRIPT_LOCATION";                                    ///< Section of the script folder.
inline constexpr const char16_t* kScriptFolder = u"directory";  ///< Key of that folder.

inline constexpr const char16_t* kDatabaseSection =
    u"RULE_DATABASE_MODULES";  ///< Section of the rule database.
inline constexpr const char16_t* kDatabaseType = u"DatabaseType";  ///< Key: "MSSQL", else SQLite.
inline constexpr const char16_t* kDriverModule = u"module1";       ///< Key: the driver module.
inline constexpr const char16_t* kConnectionString =
    u"ConnectionString";  ///< Key: how a server is reached.
inline constexpr const char16_t* kDatabaseFile =
    u"FileName";  ///< Key: the file of an SQLite database.
/// All keys of the database.
inline constexpr const char16_t* kDatabaseKeys[] = {kDatabaseType, kDriverModule, kConnectionString,
                                                    kDatabaseFile};

}  // namespace configuration

/// One key of ConfigModule.ini.
struct ConfigurationEntry {
    CStringW section;        ///< Name of its section.
    CStringW key;            ///< Its name.
    CStringW value;          ///< What follows "=".
    bool commented = false;  ///< The line is commented out; it is read all the same.
};

/// The folder of the user-defined rules that ConfigModule.ini names; nothing without a record of
/// it. The file is looked at for each call, and read when it has changed.
CORVANE_EXPORT std::optional<CStringW> GetScriptFolder();

/// ConfigModule.ini as the library reads it now, with what tells why a line does not count.
struct ModuleConfiguration {
    CStringW settingsFolder;  ///< With its closing separator. The query does not make it.
    CStringW file;            ///< Full path of ConfigModule.ini, whether it exists or not.
    bool readable = false;    ///< The file exists and can be read.

    /// The folder of the user-defined rules; nothing without a record of it.
    std::optional<CStringW> scriptFolder;

    /// The keys of the database's section that are set, as the reader of these keys takes them,
    /// which is not the one of the script folder; but whole, where the database is given 259
    /// characters. The value of ConnectionString may hold a password.
    std::vector<ConfigurationEntry> databaseKeys;

    /// All keys in the order of the file, as the reader of the script folder takes them: as
    /// written.
    std::vector<ConfigurationEntry> entries;
    /// The text of the file's last line when that has no line end, and so is no entry.
    CStringW cutLine;
    /// The file begins with a byte order mark, which becomes part of its first line.
    bool byteOrderMark = false;
};

/// Reads the file as it is now.
CORVANE_EXPORT ModuleConfiguration GetModuleConfiguration();

}  // namespace corvane
