#pragma once

#include <optional>
#include <string_view>

#include <corvane/text/CStringW.h>

namespace corvane::scriptrules {

/// The text of a script file as the host gets it, by the rules of the text files that script
/// folders hold.
///
/// - The bytes are UTF-8, or UTF-16 of either order when they begin with its byte-order mark.
/// - CR LF becomes LF; any other CR stays.
/// - Ctrl-Z (U+001A) ends the text.
/// - What is ill-formed, a sequence cut at the end among it, becomes U+FFFD, so that the host
///   complains at its place and the rest of the script stands. U+0000 does too: it would end the
///   script for the host, which would then run a half of it.
/// - Blanks fill the text up to as many units as the file has bytes.
/// - Of the first five units, those whose low byte could be a piece of a byte-order mark (EF, BB,
///   BF, FF, FE) are passed over, whatever their high byte.
CStringW scriptText(std::string_view bytes);

/// The text of a file; nothing when it cannot be read or is larger than any script.
std::optional<CStringW> readScript(const CStringW& path);

}  // namespace corvane::scriptrules
