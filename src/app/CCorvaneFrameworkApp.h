#pragma once

#include <cstdint>
#include <string_view>

#include <corvane/app/StringTable.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/text/CStringW.h>

#include "platform/WinApp.h"

/// The library's application object: settles the user's language when the library is loaded and
/// holds the modules with the texts until it is unloaded. Between the two it does not change, so
/// every thread may read it.
///
/// Nothing at start is fatal: where a language has no module, English stands in, and where that is
/// missing too every text is empty.
class CCorvaneFrameworkApp : public CWinApp {
public:
    CCorvaneFrameworkApp() = default;
    ~CCorvaneFrameworkApp() override;

    /// Makes this object the library's one and loads the modules. Always true.
    bool InitInstance() override;
    /// Frees the modules, with all texts.
    int ExitInstance() override;

    /// The full path of the library's own file.
    CStringW GetFrameworkDllPath() const;
    /// The English text of a string resource; empty when there is none.
    CStringW GetEnglishString(unsigned int number) const;

    /// The texts in the language in use; null without a module.
    const corvane::StringTable* strings() const { return strings_; }

    corvane::LoadedModule m_hResModule;         ///< The module of the language in use.
    corvane::LoadedModule m_hEnglishResModule;  ///< The English one, loaded in every case.
    CStringW m_strLanguage;        ///< Empty until start; a name that is set before is used.
    CStringW m_strLanguageFolder;  ///< The folder of the module in use.
    CStringW m_strResModulePath;   ///< The path that was last tried for the module in use.

private:
    void loadLanguageModule();

    const corvane::StringTable* strings_ = nullptr;
    const corvane::StringTable* englishStrings_ = nullptr;
};

namespace corvane::app {

/// The library's application object; null before the library has started and after it has ended.
CCorvaneFrameworkApp* frameworkApp();

}  // namespace corvane::app
