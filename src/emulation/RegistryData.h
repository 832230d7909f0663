#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulation/RegistryTree.h"
#include "system/TextLines.h"

namespace corvane::emulation {

/// Cuts a text in double quotes off the front and gives it without its escapes; nothing, and
/// `rest` where it was, when it does not begin with a quote or is not closed. A backslash that
/// escapes neither a backslash nor a quote stands for itself.
std::optional<std::u16string> takeQuoted(std::u16string_view& rest);

/// True when nothing more stands on a line than blanks and a comment.
bool isLineEnd(std::u16string_view rest);

/// The data of a value, which begins with `text` and may go on in `lines`: a quoted text,
/// "dword:...", "hex:..." or "hex(type):...". Nothing when it cannot be read; then the lines that
/// belonged to it have been passed over. `eightBit` says that texts in hex(...) are in the code
/// page and not in UTF-16.
std::optional<RegistryValue> readRegistryData(std::u16string_view text, system::TextLines& lines,
                                              bool eightBit);

}  // namespace corvane::emulation
