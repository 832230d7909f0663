#pragma once

#include <cstdint>
#include <string_view>

#include <corvane/app/Installation.h>
#include <corvane/app/StringTable.h>
#include <corvane/base/Types.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/text/CStringW.h>

#include "emulation/UserInterface.h"

/// The library's application object: settles the user's language when the library is loaded and
/// holds the modules with the texts until it is unloaded. Between the two it does not change, so
/// every thread may read it.
///
/// Nothing at start is fatal: where a language has no module, English stands in, and where that is
/// missing too, or there is no memory for it, every text is empty.
class CCorvaneFrameworkApp : public CWinApp {
public:
    CCorvaneFrameworkApp() = default;
    ~CCorvaneFrameworkApp() override;

    /// Makes this object the library's one and loads the modules. Always true; nothing is thrown.
    bool InitInstance() override;
    /// Frees the modules, with all texts.
    int ExitInstance() override;

    /// The full path of the library's own file.
    CStringW GetFrameworkDllPath() const;
    /// The module with the English texts, which may be the one in use.
    const corvane::LoadedModule& englishModule() const;
    /// The English text of a string resource; empty when there is none.
    CStringW GetEnglishString(unsigned int number) const;

    // Help is in src/frontend, which rules do not need.

    /// Shows help on a topic: the site's own page, else the topic in the caller's compiled help
    /// file. 1 when it was shown, else 0; nothing is thrown.
    int ShowHelp(CStringW helpFile, QorLong helpId) const;
    /// Opens the site's own page of a topic. 1 when it was opened.
    int ShowCustomizedHelp(QorLong helpId) const;
    /// The folder of the site's own pages; `folder` stays as it is when the site names none.
    void GetCustomizedHelpFolderPath(CStringW& folder) const;
    /// The help name of a topic in a file of lines "#define <help name> <topic>": the first line
    /// that has the number's digits is taken, and loses all of them. 1 when there is one. A file
    /// that cannot be read leaves the name as it is; without a line it is empty.
    int FindHelpIDInString(CStringW file, QorLong helpId, CStringW& helpName) const;
    /// The same for the page of a help name, in a file of lines "<help name> = <page>".
    int FindHelpHtmFileName(CStringW file, CStringW helpName, CStringW& page) const;

    /// The texts in the language in use; null without a module.
    const corvane::StringTable* strings() const { return strings_; }

    /// What settled the language; without meaning for a name that was set before the start.
    corvane::LanguageSource languageSource() const { return languageSource_; }
    /// Where the module of the language is expected, whether it is there or not.
    CStringW wantedModulePath() const;

    corvane::LoadedModule m_hResModule;         ///< The module of the language in use.
    corvane::LoadedModule m_hEnglishResModule;  ///< The English one, unless that is the one in use.
    CStringW m_strLanguage;        ///< Empty until start; a name that is set before is used.
    CStringW m_strLanguageFolder;  ///< The folder of the module in use.
    CStringW m_strResModulePath;   ///< The path that was last tried for the module in use.

private:
    void loadLanguageModule();

    corvane::LanguageSource languageSource_ = corvane::LanguageSource::User;
    const corvane::StringTable* strings_ = nullptr;
    const corvane::StringTable* englishStrings_ = nullptr;
};

namespace corvane::app {

/// The library's application object; null before the library has started and after it has ended.
CCorvaneFrameworkApp* frameworkApp();

}  // namespace corvane::app
