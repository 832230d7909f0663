#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include <corvane/app/Installation.h>
#include <corvane/app/StringTable.h>

namespace corvane {

/// The texts of a module in one language, which has the name of a folder in Lang/: "french".
struct LanguageTable {
    std::u16string_view language;  ///< Name of the language.
    StringTable table;             ///< Its texts.
};

/// The table of the language that the library has settled on, else the first one. `tables` has one
/// at least.
inline const StringTable& TableOfLanguage(std::span<const LanguageTable> tables) {
    const CStringW language = GetInstallation().language;
    for (const LanguageTable& each : tables)
        if (each.language == language.View()) return each.table;
    return tables.front().table;
}

/// The texts of the module that calls it, in the user's language. corvane_add_rule_module defines
/// it in each module that has STRINGS, and in no other.
const StringTable& ModuleStrings();

/// One of these texts by its number, zero-terminated; empty when there is none.
inline std::u16string_view ModuleText(std::uint32_t number) {
    return FindTableText(&ModuleStrings(), number);
}

}  // namespace corvane
