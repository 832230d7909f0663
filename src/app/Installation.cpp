#include <corvane/app/Installation.h>
#include <corvane/base/Version.h>

#include "app/CCorvaneFrameworkApp.h"
#include "system/Modules.h"

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
            .englishFile = framework->m_hEnglishResModule.file()};
}

}  // namespace corvane
