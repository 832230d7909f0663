#pragma once

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// What settled the language in use.
enum class LanguageSource {
    Option,     ///< "OptionsLanguage" in the user's registry.
    CadSystem,  ///< The CAD system, which is set to English.
    User,       ///< The user's language.
};

/// What the library found when it was loaded. Only a new load of the library changes it.
struct Installation {
    CStringW version;        ///< Of the library, such as "1.2.0".
    CStringW libraryFile;    ///< Full path of the library's own file.
    CStringW installFolder;  ///< The folder above the one of that file.

    CStringW language;  ///< The language that was asked for, such as "french".
    LanguageSource languageSource = LanguageSource::User;  ///< What settled it.

    /// Where that language's module of texts is expected. Paths of modules are as Windows names
    /// them; LoadedModule finds the file.
    CStringW wantedModule;
    /// The module that was tried last, with English in place of a language without a module.
    CStringW triedModule;
    CStringW moduleFile;   ///< Full path of the module in use; empty without one.
    CStringW englishFile;  ///< Full path of the English module; empty without it.
};

/// Empty before the library has started and after it has ended.
CORVANE_EXPORT Installation GetInstallation();

}  // namespace corvane
