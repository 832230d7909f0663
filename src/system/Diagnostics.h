#pragma once

#include <string_view>

namespace corvane::system {

/// A line for whoever debugs the process. On POSIX it goes to standard error when
/// CORVANE_DEBUG_OUTPUT is set, and nowhere otherwise.
void debugOutput(std::u16string_view text);

/// Writes a text and a line end to standard error. Control characters other than tab and line end
/// become U+FFFD: the text may come out of a foreign file and must not steer a terminal.
void writeStandardError(std::u16string_view text);

}  // namespace corvane::system
