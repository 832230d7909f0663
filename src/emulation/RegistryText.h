#pragma once

#include <string_view>

#include "emulation/Registry.h"
#include "emulation/RegistryTree.h"

namespace corvane::emulation {

/// Applies the text of a .reg file to the keys of one root. `own` is that root, LocalMachine or
/// CurrentUser; keys of HKEY_CLASSES_ROOT go into its "Software\Classes", keys of other roots are
/// passed over, and so is every line that cannot be read. Values behind a heading that cannot be
/// read belong to no key.
void applyRegistryText(std::u16string_view text, RegistryRoot own, RegistryNode& root);

/// The path of the keys that stand for HKEY_CLASSES_ROOT below the other two roots.
inline constexpr std::u16string_view kClassesPath = u"Software\\Classes";

}  // namespace corvane::emulation
