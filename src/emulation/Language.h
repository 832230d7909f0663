#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::emulation {

/// English of the United States, which is used for whatever is not known.
inline constexpr std::uint16_t kDefaultLanguageId = 1033;

/// The ISO 639 language and ISO 3166 country of a locale. Both are plain letters.
struct LocaleNames {
    std::u16string language;
    std::u16string country;
};

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

/// The user's language as a 16-bit language identifier, such as 1036 for French of France. On POSIX
/// it comes from the first of LC_ALL, LC_MESSAGES and LANG that is set and not empty: fr_FR,
/// fr_FR.UTF-8 and fr give 1036, fr_CA 3084. "C", "POSIX", nothing and what is not known give 1033,
/// English of the United States. A language without region is taken as that of its own country.
std::uint16_t userLanguageId();

/// The language and country of the system's default locale, such as "en" and "US".
/// On POSIX it is read from /etc/default/locale or /etc/locale.conf (LANG), else from the user's
/// locale; "en" and "US" when that names none. A language outside the table of identifiers may have
/// an empty country.
LocaleNames systemLocale();

}  // namespace corvane::emulation
