#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Locale.h"

namespace corvane::platform {

/// English of the United States, which stands for whatever is not known.
inline constexpr std::uint16_t kDefaultLanguageId = 1033;

/// Language and country of a locale's name, such as "fr_CA.UTF-8@euro" or "fr-CA": the language in
/// lower case, the country in upper case and empty when the name has none. Nothing for "C", "POSIX"
/// and what is no such name; so what comes out is safe as part of a path.
std::optional<LocaleNames> parseLocaleName(std::u16string_view name);

/// The 16-bit language identifier of a locale, or the default one. A language without country is
/// taken as that of its own country.
std::uint16_t languageId(const LocaleNames& locale);

/// The country that a language without country is taken with; empty when it is not known.
std::u16string_view homeCountry(std::u16string_view language);

/// The value of LANG in a file of shell assignments; empty when there is none.
std::u16string languageSetting(std::u16string_view text);

}  // namespace corvane::platform
