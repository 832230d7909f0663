#include <corvane/app/Installation.h>
#include <corvane/base/Version.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"

using corvane::Installation;
using corvane::LanguageSource;

namespace {

constexpr const char16_t* kReinstall = u"install the library again as a whole";

const char16_t* sourceText(LanguageSource source) {
    switch (source) {
        case LanguageSource::Option:
            return u"by OptionsLanguage in the user's registry";
        case LanguageSource::CadSystem:
            return u"since the CAD system is set to English";
        case LanguageSource::User:
            break;
    }
    return u"the language of the user (LC_ALL, LC_MESSAGES, LANG)";
}

/// Why a module of texts is not in use.
CStringW moduleFault(const CStringW& path) {
    const corvane::LoadedModule module(path);
    if (module) return u"holds no texts";
    return module.fault().empty() ? CStringW(u"is not there") : u"won't load: " + module.fault();
}

void checkLibrary(Diagnosis& diagnosis, const Installation& installation) {
    const CStringW library =
        shownPath(installation.libraryFile) + u", version " + installation.version;
    if (installation.version == CStringW(corvane::kVersion))
        diagnosis.good(u"library", library);
    else
        diagnosis.wrong(
            u"library",
            library + u", but this program is of version " + CStringW(corvane::kVersion),
            u"install both from one build");
}

void checkLanguage(Diagnosis& diagnosis, const Installation& installation) {
    diagnosis.good(u"language",
                   installation.language + u", " + sourceText(installation.languageSource));
    if (installation.moduleFile.IsEmpty()) {
        diagnosis.wrong(u"language module",
                        shownPath(installation.triedModule) + u" " +
                            moduleFault(installation.triedModule) +
                            u", so that no rule file can be read",
                        kReinstall);
        return;
    }
    diagnosis.good(u"language module", installation.moduleFile);
    if (installation.triedModule == installation.wantedModule) return;
    const CStringW text =
        shownPath(installation.wantedModule) + u" " + moduleFault(installation.wantedModule);
    // A language may well have no texts of its own; a module that is there ought to load.
    if (corvane::LoadedModule(installation.wantedModule).fault().empty())
        diagnosis.note(installation.language, text + u": English stands in");
    else
        diagnosis.wrong(installation.language, text, kReinstall);
}

}  // namespace

void checkInstallation(Diagnosis& diagnosis) {
    diagnosis.section(u"Installation");
    const Installation installation = corvane::GetInstallation();
    checkLibrary(diagnosis, installation);
    checkLanguage(diagnosis, installation);
    if (installation.englishFile.IsEmpty() && !installation.moduleFile.IsEmpty())
        diagnosis.wrong(u"English module", u"it cannot be loaded", kReinstall);
}

void checkRegistry(Diagnosis& diagnosis) {
    const CStringW folder = corvane::GetEnvironmentText(u"CORVANE_REGISTRY_DIR");
    if (folder.IsEmpty()) return;
    if (presenceOfFolder(folder) != Presence::Readable) {
        diagnosis.wrong(u"registry", folder + u" is no folder that can be read",
                        u"let --registry or CORVANE_REGISTRY_DIR name a folder, or neither");
        return;
    }
    CStringW found;
    for (const char16_t* name : {u"machine.reg", u"user.reg"}) {
        const Presence presence = presenceOfFile(folder + u"/" + name);
        if (presence == Presence::Unreadable)
            diagnosis.wrong(name, folder + u"/" + name + u" cannot be read",
                            u"let the user read the file");
        if (presence == Presence::Readable)
            found += (found.IsEmpty() ? u"" : u" and ") + CStringW(name);
    }
    if (found.IsEmpty())
        diagnosis.note(u"registry", folder + u" has neither machine.reg nor user.reg");
    else
        diagnosis.good(u"registry", found + u" in " + folder);
}
