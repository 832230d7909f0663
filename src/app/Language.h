#pragma once

#include <string>
#include <string_view>

#include <corvane/app/Installation.h>
#include <corvane/app/StringTable.h>

namespace corvane::app {

/// The folder and the name of the language that every installation has.
inline constexpr std::u16string_view kEnglish = u"english";

struct LanguageChoice {
    std::u16string_view name;
    LanguageSource source = LanguageSource::User;
};

/// The name of the language to work in, such as "french", and what says so. The option
/// "OptionsLanguage" of the registry decides: 0 is English, another number a language identifier;
/// 1, or no option, follows the CAD system, which may be set to English, and then the user. An
/// unknown identifier is English.
LanguageChoice chosenLanguage();

/// The folder below Lang/ that a language name leads to. Both Chinese names lead to the folder
/// named after the system's locale, such as "zh_CN"; a language without a folder of its own leads
/// to English.
std::u16string languageFolderName(std::u16string_view languageName);

/// The calling thread's current table, which is that of the library's own resource module where
/// none has been set; null without that module.
const StringTable* currentStringTable();

}  // namespace corvane::app
