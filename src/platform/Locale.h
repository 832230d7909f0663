#pragma once

#include <cstdint>
#include <string>

namespace corvane::platform {

/// The user's language as a 16-bit language identifier, such as 1036 for French of France. On POSIX
/// it comes from the first of LC_ALL, LC_MESSAGES and LANG that is set and not empty: fr_FR,
/// fr_FR.UTF-8 and fr give 1036, fr_CA 3084. "C", "POSIX", nothing and what is not known give 1033,
/// English of the United States. A language without region is taken as that of its own country.
std::uint16_t userLanguageId();

/// The ISO 639 language and ISO 3166 country of the system's default locale, such as "en" and "US".
/// On POSIX it is read from /etc/default/locale or /etc/locale.conf (LANG), else from the user's
/// locale; "en" and "US" when that names none. Both are plain letters; a language outside the table
/// of identifiers may have an empty country.
struct LocaleNames {
    std::u16string language;
    std::u16string country;
};
LocaleNames systemLocale();

}  // namespace corvane::platform
