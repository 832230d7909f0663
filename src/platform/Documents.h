#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::platform {

/// The program that documents are opened with, by its full path, or nothing. On POSIX the
/// environment variable CORVANE_HELP_OPENER names it, by its full path or by a name in PATH;
/// without the variable it is "xdg-open".
std::optional<std::u16string> documentOpener();

/// Opens a file or a folder in whatever the user opens such a one with, and does not wait for that
/// to end. False when the path is missing or no plain argument, or when the opener is missing or
/// reports a failure within two seconds.
bool openDocument(std::u16string_view path);

}  // namespace corvane::platform
