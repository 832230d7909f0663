#include <corvane/app/Installation.h>
#include <corvane/base/Version.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/platform/RegistrySources.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"
#include "files/ModuleFault.h"

using corvane::Installation;
using corvane::LanguageSource;

namespace {

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
CStringW textsFault(const CStringW& path) {
    const corvane::LoadedModule module(path);
    return module ? shownPath(path) + u" holds no texts" : moduleFault(module, path);
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
        diagnosis.wrong(
            u"language module",
            textsFault(installation.triedModule) + u", so that no rule file can be read",
            kReinstall);
        return;
    }
    diagnosis.good(u"language module", installation.moduleFile);
    if (installation.triedModule == installation.wantedModule) return;
    const CStringW text = textsFault(installation.wantedModule);
    // A language may well have no texts of its own; a module that is there ought to load.
    if (corvane::LoadedModule(installation.wantedModule).fault().empty())
        diagnosis.note(installation.language, text + u": English stands in");
    else
        diagnosis.wrong(installation.language, text, kReinstall);
}

/// "libX.so.0.1.0" is known to what links it as "libX.so.0.1"; the loader finds nothing else.
void checkLinks(Diagnosis& diagnosis, const Installation& installation) {
    const CStringW version = u".so." + CStringW(corvane::kVersion);
    const CStringW name = u".so." + CStringW(corvane::kLibraryVersion);
    const CStringW folder =
        shownPath(CStringW(installation.libraryFile)
                      .Left(installation.libraryFile.GetLength() -
                            static_cast<int>(lastName(installation.libraryFile).size())));
    for (const CStringW& file : filesIn(folder).value_or(std::vector<CStringW>())) {
        if (file.Right(version.GetLength()) != version) continue;
        const CStringW link = file.Left(file.GetLength() - version.GetLength()) + name;
        if (presenceOfFile(folder + link) != Presence::Readable)
            diagnosis.wrong(link,
                            folder + link + u" is not there, so that nothing that links it starts",
                            u"let the link lead to " + file + u", or install the library again");
    }
}

/// A program that finds another library than the one of its own tree mixes two installations.
void checkTree(Diagnosis& diagnosis, const Installation& installation) {
    std::error_code failed;
    const std::filesystem::path program =
        std::filesystem::read_symlink("/proc/self/exe", failed).parent_path().parent_path();
    const std::filesystem::path library = placeOf(shownPath(installation.installFolder));
    if (failed || !std::filesystem::exists(program / "lib", failed) || program == library) return;
    diagnosis.note(u"library", u"it is of another tree than the program, which is in " +
                                   CStringW(program.u16string()));
}

}  // namespace

void checkInstallation(Diagnosis& diagnosis) {
    diagnosis.section(u"Installation");
    const Installation installation = corvane::GetInstallation();
    checkLibrary(diagnosis, installation);
    checkTree(diagnosis, installation);
    checkLinks(diagnosis, installation);
    checkLanguage(diagnosis, installation);
    if (installation.englishFile.IsEmpty() && !installation.moduleFile.IsEmpty())
        diagnosis.wrong(
            u"English module",
            textsFault(installation.installFolder + u"\\Lang\\english\\CorvaneFrameworkResu.dll"),
            kReinstall);
}

void checkRegistry(Diagnosis& diagnosis) {
    constexpr const char16_t* kSubject = u"registry";
    const CStringW folder = corvane::GetEnvironmentText(u"CORVANE_REGISTRY_DIR");
    diagnosis.noteRelative(kSubject, folder);
    if (!folder.IsEmpty() && presenceOfFolder(folder) != Presence::Readable) {
        diagnosis.wrong(kSubject, folder + u" is no folder that can be read",
                        u"let --registry or CORVANE_REGISTRY_DIR name a folder, or neither");
        return;
    }
    bool any = false;
    for (const corvane::RegistrySource& source : corvane::GetRegistrySources()) {
        const CStringW file = shownPath(source.file);
        if (presenceOfFile(file) == Presence::Missing) continue;
        any = true;
        if (!source.readable)
            diagnosis.wrong(lastName(file), file + u" cannot be read",
                            u"put a file there that the user can read");
        else if (!source.hasKeys)
            diagnosis.note(lastName(file), file + u" holds no key of the registry");
        else
            diagnosis.good(lastName(file), file);
    }
    if (any) return;
    diagnosis.note(kSubject, folder.IsEmpty() ? CStringW(u"none of its files is there")
                                              : folder + u" has neither machine.reg nor user.reg");
}
