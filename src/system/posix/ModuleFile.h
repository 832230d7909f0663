#pragma once

#include <optional>
#include <string>

namespace corvane::system {

/// Why a file may not be handed to the loader, or nothing. The loader maps what the program headers
/// of a module name; where the file ends before, the process gets SIGBUS as soon as it looks there.
/// What the loader itself refuses with a message, such as a module for another machine, is left to
/// it.
std::optional<std::string> moduleFileFault(const std::string& path);

}  // namespace corvane::system
