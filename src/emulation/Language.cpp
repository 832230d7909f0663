#include "emulation/Language.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "system/Files.h"
#include "system/Process.h"
#include "system/TextLines.h"
#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

namespace {

struct Language {
    std::u16string_view language;
    std::u16string_view country;
    std::uint16_t id;
};

// The home country of a language comes first.
constexpr Language kLanguages[] = {
    {u"cs", u"CZ", 1029},  {u"de", u"DE", 1031},  {u"de", u"CH", 2055},  {u"de", u"AT", 3079},
    {u"de", u"LU", 4103},  {u"de", u"LI", 5127},  {u"en", u"US", 1033},  {u"en", u"GB", 2057},
    {u"en", u"AU", 3081},  {u"en", u"CA", 4105},  {u"en", u"NZ", 5129},  {u"en", u"IE", 6153},
    {u"en", u"ZA", 7177},  {u"en", u"JM", 8201},  {u"en", u"BZ", 10249}, {u"en", u"TT", 11273},
    {u"en", u"ZW", 12297}, {u"en", u"PH", 13321}, {u"en", u"HK", 15369}, {u"en", u"IN", 16393},
    {u"en", u"MY", 17417}, {u"en", u"SG", 18441}, {u"es", u"ES", 1034},  {u"es", u"MX", 2058},
    {u"es", u"GT", 4106},  {u"es", u"CR", 5130},  {u"es", u"PA", 6154},  {u"es", u"DO", 7178},
    {u"es", u"VE", 8202},  {u"es", u"CO", 9226},  {u"es", u"PE", 10250}, {u"es", u"AR", 11274},
    {u"es", u"EC", 12298}, {u"es", u"CL", 13322}, {u"es", u"UY", 14346}, {u"es", u"PY", 15370},
    {u"es", u"BO", 16394}, {u"es", u"SV", 17418}, {u"es", u"HN", 18442}, {u"es", u"NI", 19466},
    {u"es", u"PR", 20490}, {u"es", u"US", 21514}, {u"es", u"CU", 23562}, {u"fr", u"FR", 1036},
    {u"fr", u"BE", 2060},  {u"fr", u"CA", 3084},  {u"fr", u"CH", 4108},  {u"fr", u"LU", 5132},
    {u"fr", u"MC", 6156},  {u"fr", u"RE", 8204},  {u"fr", u"CD", 9228},  {u"fr", u"SN", 10252},
    {u"fr", u"CM", 11276}, {u"fr", u"CI", 12300}, {u"fr", u"ML", 13324}, {u"fr", u"MA", 14348},
    {u"fr", u"HT", 15372}, {u"it", u"IT", 1040},  {u"it", u"CH", 2064},  {u"ja", u"JP", 1041},
    {u"ko", u"KR", 1042},  {u"pl", u"PL", 1045},  {u"pt", u"PT", 2070},  {u"pt", u"BR", 1046},
    {u"ru", u"RU", 1049},  {u"ru", u"MD", 2073},  {u"zh", u"CN", 2052},  {u"zh", u"TW", 1028},
    {u"zh", u"HK", 3076},  {u"zh", u"SG", 4100},  {u"zh", u"MO", 5124},
};

bool isLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool isWord(std::u16string_view text, std::size_t shortest, std::size_t longest) {
    return text.size() >= shortest && text.size() <= longest &&
           std::all_of(text.begin(), text.end(), isLetter);
}

std::u16string mapped(std::u16string_view text, char16_t (*mapping)(char16_t)) {
    std::u16string result;
    std::transform(text.begin(), text.end(), std::back_inserter(result), mapping);
    return result;
}

}  // namespace

std::optional<LocaleNames> parseLocaleName(std::u16string_view name) {
    name = name.substr(0, name.find_first_of(u".@"));
    const std::size_t languageEnd = std::min(name.find_first_of(u"_-"), name.size());
    const std::u16string_view language = name.substr(0, languageEnd);
    if (!isWord(language, 2, 3)) return std::nullopt;
    if (languageEnd == name.size()) return LocaleNames{mapped(language, toLower), {}};
    const std::u16string_view country = name.substr(languageEnd + 1);
    if (!isWord(country, 2, 2)) return std::nullopt;
    return LocaleNames{mapped(language, toLower), mapped(country, toUpper)};
}

std::uint16_t languageId(const LocaleNames& locale) {
    for (const Language& known : kLanguages) {
        if (known.language == locale.language &&
            (locale.country.empty() || known.country == locale.country))
            return known.id;
    }
    return kDefaultLanguageId;
}

std::u16string_view homeCountry(std::u16string_view language) {
    for (const Language& known : kLanguages) {
        if (known.language == language) return known.country;
    }
    return {};
}

std::u16string languageSetting(std::u16string_view text) {
    constexpr std::u16string_view kName = u"LANG=";
    constexpr std::u16string_view kExport = u"export ";
    std::u16string setting;
    TextLines lines(text);
    // As in a shell, the last assignment holds.
    while (std::optional<std::u16string_view> line = lines.next()) {
        if (line->starts_with(kExport)) line = trimmed(line->substr(kExport.size()));
        if (line->starts_with(kName)) setting = unquoted(line->substr(kName.size()));
    }
    return setting;
}

namespace {

constexpr std::size_t kLargestSettings = 65536;

std::optional<LocaleNames> userLocale() {
    for (const std::u16string_view name : {u"LC_ALL", u"LC_MESSAGES", u"LANG"}) {
        const std::optional<std::u16string> value = environmentVariable(name);
        if (value && !value->empty()) return parseLocaleName(*value);
    }
    return std::nullopt;
}

std::optional<LocaleNames> machineLocale() {
    for (const std::u16string_view file : {u"/etc/default/locale", u"/etc/locale.conf"}) {
        const std::optional<std::string> bytes = readFile(file, kLargestSettings);
        if (!bytes) continue;
        if (const std::u16string name = languageSetting(fromUtf8(*bytes)); !name.empty())
            return parseLocaleName(name);
    }
    return userLocale();
}

}  // namespace

std::uint16_t userLanguageId() {
    const std::optional<LocaleNames> locale = userLocale();
    return locale ? languageId(*locale) : kDefaultLanguageId;
}

LocaleNames systemLocale() {
    std::optional<LocaleNames> locale = machineLocale();
    if (!locale) return {u"en", u"US"};
    if (locale->country.empty()) locale->country = homeCountry(locale->language);
    return *locale;
}

}  // namespace corvane::emulation
