#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::system {

/// The file names that a module's name may stand for, best first: "QORDatabaseu.dll" gives
/// "QORDatabaseu.so" and "libQORDatabaseu.so", then the name itself.
std::vector<std::string> moduleFileNames(std::string_view name);

/// The full or relative path of the file in `folder` that a module's name stands for, whatever its
/// case, or nothing. Where several fit, the better form wins, then the exact case, then a name
/// without version number, then the first in byte order. An empty folder is the root.
std::optional<std::string> findModuleInFolder(const std::string& folder, std::string_view name);

/// True when the name of some file in `folder` fits what moduleFileNames makes of `pattern`; case
/// and a version number after ".so" make no difference.
bool anyModuleInFolderFits(const std::string& folder, std::string_view pattern);

/// Why a file may not be handed to the loader, or nothing. The loader maps what the program headers
/// of a module name; where the file ends before, the process gets SIGBUS as soon as it looks there.
/// What the loader itself refuses with a message, such as a module for another machine, is left to
/// it.
std::optional<std::string> moduleFileFault(const std::string& path);

}  // namespace corvane::system
