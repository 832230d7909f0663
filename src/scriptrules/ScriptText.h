#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <corvane/text/CStringW.h>

namespace corvane::scriptrules {

/// What a script file may hold, in bytes.
inline constexpr std::size_t kLargestScript = std::size_t{1} << 28;

/// The text of a script file as the host gets it, by the rules of the text files that script
/// folders hold.
///
/// - The bytes are UTF-8, or UTF-16 of either order when they begin with its byte-order mark.
/// - CR LF becomes LF; any other CR stays.
/// - Ctrl-Z (U+001A) is a character like any other: a script that went on after it, and of which
///   only the first part ran, would pass without having checked anything.
/// - What is ill-formed, a sequence cut at the end among it, becomes U+FFFD, so that the host
///   complains at its place and the rest of the script stays. U+0000 does too: it would end the
///   script for the host, which would then run a half of it.
/// - Blanks fill the text up to as many units as the file has bytes.
/// - Of the first five units, those whose low byte could be a piece of a byte-order mark (EF, BB,
///   BF, FF, FE) are passed over, whatever their high byte.
CStringW scriptText(std::string_view bytes);

/// The text of a file; nothing when it cannot be read or is too large.
std::optional<CStringW> readScript(const CStringW& path);

/// True for a file that can be opened and holds more than kLargestScript bytes.
bool isTooLarge(const CStringW& path);

}  // namespace corvane::scriptrules
