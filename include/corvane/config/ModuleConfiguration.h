#pragma once

#include <optional>
#include <vector>

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// One key of ConfigModule.ini as the reader of the script folder takes it: to the letter.
struct ConfigurationEntry {
    CStringW section;
    CStringW key;
    CStringW value;
    bool commented = false;  ///< The line is commented out, which keeps nobody from reading it.
};

/// ConfigModule.ini as the library reads it now, with what tells why a line does not count.
struct ModuleConfiguration {
    CStringW settingsFolder;  ///< With its closing separator. The query does not make it.
    CStringW file;            ///< Full path of ConfigModule.ini, whether it exists or not.
    bool readable = false;

    /// The folder of the user-defined rules; nothing without a record of it.
    std::optional<CStringW> scriptFolder;

    /// All keys in the order of the file.
    std::vector<ConfigurationEntry> entries;
    /// The text of the file's last line when that has no line end, and so is no entry.
    CStringW cutLine;
    /// The file begins with a byte order mark, which becomes part of its first line.
    bool byteOrderMark = false;
};

CORVANE_EXPORT ModuleConfiguration GetModuleConfiguration();

}  // namespace corvane
