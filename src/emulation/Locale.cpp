#include <string_view>

#include "emulation/Language.h"
#include "system/Environment.h"
#include "system/Files.h"
#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

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
