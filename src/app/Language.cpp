#include "app/Language.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>

#include "emulation/Language.h"
#include "emulation/Registry.h"

namespace corvane::app {
namespace {

struct Language {
    std::uint32_t identifier;
    std::u16string_view name;
    std::u16string_view folder;  // empty: named after the system's locale
};

constexpr Language kLanguages[] = {
    {1028, u"chinese", {}},
    {1029, u"czech", kEnglish},
    {1031, u"german", kEnglish},
    {1033, kEnglish, kEnglish},
    {1034, u"spanish", kEnglish},
    {1036, u"french", u"french"},
    {1040, u"italian", kEnglish},
    {1041, u"japanese", u"japanese"},
    {1042, u"korean", u"korean"},
    {1045, u"polish", kEnglish},
    {1046, u"portuguese-brazilian", kEnglish},
    {1049, u"russian", kEnglish},
    {2052, u"chinese-simplified", {}},
};

constexpr std::u16string_view kOptionsKey = u"SOFTWARE\\Tessaly\\ORB_PRODUCT\\Corvane\\Add-in";
constexpr std::u16string_view kCadSystemKeys[] = {
    u"SOFTWARE\\Solidworks\\SolidWorks 2007\\General",
    u"SOFTWARE\\Solidworks\\SolidWorks 2008\\General",
};

// What the option "OptionsLanguage" says when it holds no language identifier.
constexpr std::uint32_t kFollowUser = 1;
constexpr std::uint32_t kNoValue = 0xFFFFFFFF;

std::uint32_t userNumber(std::u16string_view key, std::u16string_view value) {
    using emulation::RegistryKey;
    const std::optional<RegistryKey> opened =
        RegistryKey::open(emulation::RegistryRoot::CurrentUser, key);
    return opened ? opened->number(value).value_or(kNoValue) : kNoValue;
}

bool isCadSystemEnglish() {
    return std::ranges::any_of(kCadSystemKeys, [](std::u16string_view key) {
        return userNumber(key, u"Use English language") == 1;
    });
}

std::u16string_view nameOf(std::uint32_t identifier) {
    const auto* const found = std::ranges::find(kLanguages, identifier, &Language::identifier);
    return found == std::end(kLanguages) ? kEnglish : found->name;
}

}  // namespace

LanguageChoice chosenLanguage() {
    const emulation::RegistryState registry;
    std::uint32_t option = userNumber(kOptionsKey, u"OptionsLanguage");
    if (option == kNoValue) option = kFollowUser;
    // A number that is no language, such as 0 for always English, has the name English.
    if (option != kFollowUser) return {nameOf(option), LanguageSource::Option};
    if (isCadSystemEnglish()) return {kEnglish, LanguageSource::CadSystem};
    return {nameOf(emulation::userLanguageId()), LanguageSource::User};
}

std::u16string languageFolderName(std::u16string_view languageName) {
    const auto* const found = std::ranges::find(kLanguages, languageName, &Language::name);
    if (found == std::end(kLanguages)) return std::u16string(kEnglish);
    if (!found->folder.empty()) return std::u16string(found->folder);
    const emulation::LocaleNames locale = emulation::systemLocale();
    return locale.language + u'_' + locale.country;
}

}  // namespace corvane::app
