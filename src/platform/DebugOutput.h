#pragma once

#include <string_view>

namespace corvane::platform {

/// A line for whoever debugs the process. On POSIX it goes to standard error when
/// CORVANE_DEBUG_OUTPUT is set, and nowhere otherwise.
void debugOutput(std::u16string_view text);

}  // namespace corvane::platform
