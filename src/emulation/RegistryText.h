#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulation/Registry.h"
#include "emulation/RegistryTree.h"
#include "system/TextLines.h"

namespace corvane::emulation {

/// Applies the text of a .reg file to the keys of one root. `own` is that root, LocalMachine or
/// CurrentUser; keys of HKEY_CLASSES_ROOT go into its "Software\Classes", keys of other roots are
/// passed over, and so is every line that cannot be read. Values after a heading that cannot be
/// read belong to no key.
void applyRegistryText(std::u16string_view text, RegistryRoot own, RegistryNode& root);

/// The path of the keys that stand for HKEY_CLASSES_ROOT below the other two roots.
inline constexpr std::u16string_view kClassesPath = u"Software\\Classes";

/// Cuts a text in double quotes off the front and gives it without its escapes; nothing, and
/// `rest` where it was, when it does not begin with a quote or is not closed. A backslash that
/// escapes neither a backslash nor a quote means itself.
std::optional<std::u16string> takeQuoted(std::u16string_view& rest);

/// True when a line has nothing more than blanks and a comment.
bool isLineEnd(std::u16string_view rest);

/// The data of a value, which begins with `text` and may go on in `lines`: a quoted text,
/// "dword:...", "hex:..." or "hex(type):...". Nothing when it cannot be read; then the lines that
/// belonged to it have been passed over. `eightBit` says that texts in hex(...) are in the code
/// page and not in UTF-16.
std::optional<RegistryValue> readRegistryData(std::u16string_view text, system::TextLines& lines,
                                              bool eightBit);

}  // namespace corvane::emulation
