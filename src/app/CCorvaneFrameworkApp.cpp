#include "app/CCorvaneFrameworkApp.h"

#include <string>
#include <utility>

#include <corvane/base/Version.h>

#include "app/Language.h"
#include "system/Modules.h"
#include "system/Paths.h"

using corvane::LoadedModule;
using corvane::StringTable;
using corvane::system::join;

namespace {

constexpr std::u16string_view kResourceModule = u"CorvaneFrameworkResu.dll";

CCorvaneFrameworkApp* currentApp = nullptr;

std::u16string folderOfLanguage(std::u16string_view folderName) {
    return join(join(corvane::system::installFolder(), u"Lang"), folderName);
}

// Takes the module in a folder when it has texts; null leaves `module` empty.
const StringTable* loadStrings(LoadedModule& module, std::u16string_view folder) {
    LoadedModule loaded(join(folder, kResourceModule));
    const auto table = loaded.function<corvane::StringTableFunction>(corvane::kStringTableName);
    const StringTable* strings = table ? table() : nullptr;
    module = strings ? std::move(loaded) : LoadedModule();
    return strings;
}

}  // namespace

CCorvaneFrameworkApp::~CCorvaneFrameworkApp() {
    if (currentApp == this) currentApp = nullptr;
}

bool CCorvaneFrameworkApp::InitInstance() {
    if (!CWinApp::InitInstance()) return false;
    currentApp = this;
    try {
        loadLanguageModule();
    } catch (...) {
        // Nothing may leave the start of a module: its loader would end the process. What has been
        // loaded before the memory ran out serves.
        return true;
    }
    return true;
}

void CCorvaneFrameworkApp::loadLanguageModule() {
    using namespace corvane::app;
    if (m_strLanguage.IsEmpty()) {
        const LanguageChoice choice = chosenLanguage();
        m_strLanguage = choice.name;
        languageSource_ = choice.source;
    }
    m_strLanguageFolder = folderOfLanguage(languageFolderName(m_strLanguage));
    strings_ = loadStrings(m_hResModule, m_strLanguageFolder);
    if (!strings_) {
        m_strLanguageFolder = folderOfLanguage(kEnglish);
        strings_ = loadStrings(m_hResModule, m_strLanguageFolder);
    }
    if (m_strLanguageFolder == folderOfLanguage(kEnglish)) {
        // One load serves for both: each looks through a folder, which a start would pay for.
        englishStrings_ = strings_;
    } else {
        englishStrings_ = loadStrings(m_hEnglishResModule, folderOfLanguage(kEnglish));
    }
    m_strResModulePath = join(m_strLanguageFolder, kResourceModule);
}

int CCorvaneFrameworkApp::ExitInstance() {
    strings_ = englishStrings_ = nullptr;
    m_hResModule = LoadedModule();
    m_hEnglishResModule = LoadedModule();
    return CWinApp::ExitInstance();
}

CStringW CCorvaneFrameworkApp::GetFrameworkDllPath() const {
    return corvane::system::ownModuleFile();
}

CStringW CCorvaneFrameworkApp::wantedModulePath() const {
    return join(folderOfLanguage(corvane::app::languageFolderName(m_strLanguage)), kResourceModule);
}

const corvane::LoadedModule& CCorvaneFrameworkApp::englishModule() const {
    return englishStrings_ == strings_ ? m_hResModule : m_hEnglishResModule;
}

CStringW CCorvaneFrameworkApp::GetEnglishString(unsigned int number) const {
    return corvane::FindTableText(englishStrings_, number);
}

namespace corvane::app {

CCorvaneFrameworkApp* frameworkApp() {
    return currentApp;
}

}  // namespace corvane::app

namespace corvane {

Installation GetInstallation() {
    const CCorvaneFrameworkApp* framework = app::frameworkApp();
    if (!framework) return {};
    return {.version = CStringW(kVersion),
            .libraryFile = framework->GetFrameworkDllPath(),
            .installFolder = system::installFolder(),
            .language = framework->m_strLanguage,
            .languageSource = framework->languageSource(),
            .wantedModule = framework->wantedModulePath(),
            .triedModule = framework->m_strResModulePath,
            .moduleFile = framework->m_hResModule.file(),
            .englishFile = framework->englishModule().file()};
}

}  // namespace corvane

namespace {

// Starts with the library and ends with it. What the start needs of the platform layer is made at
// its first use, so the order in which the files of the library are initialised does not matter.
class LibraryLife {
public:
    LibraryLife() { app_.InitInstance(); }
    LibraryLife(const LibraryLife&) = delete;
    LibraryLife& operator=(const LibraryLife&) = delete;
    ~LibraryLife() { app_.ExitInstance(); }

private:
    CCorvaneFrameworkApp app_;
};

const LibraryLife life;

}  // namespace
