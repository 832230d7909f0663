#include <corvane/app/Installation.h>
#include <corvane/base/Version.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/platform/RegistrySources.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"
#include "files/ModuleFault.h"

using corvane::Installation;
using corvane::LanguageSource;

namespace {

CStringW sourceText(LanguageSource source) {
    switch (source) {
        case LanguageSource::Option:
            return tr("by OptionsLanguage in the user's registry");
        case LanguageSource::CadSystem:
            return tr("since the CAD system is set to English");
        case LanguageSource::User:
            break;
    }
    return tr("the language of the user (LC_ALL, LC_MESSAGES, LANG)");
}

/// Why a module of texts is not in use.
CStringW textsFault(const CStringW& path) {
    const corvane::LoadedModule module(path);
    return module ? tr("{0} holds no texts", shownPath(path)) : moduleFault(module, path);
}

void checkLibrary(Diagnosis& diagnosis, const Installation& installation) {
    const CStringW library = shownPath(installation.libraryFile);
    if (installation.version == CStringW(corvane::kVersion))
        diagnosis.good(tr("library"), tr("{0}, version {1}", library, installation.version));
    else
        diagnosis.wrong(tr("library"),
                        tr("{0}, version {1}, but this program is of version {2}", library,
                           installation.version, corvane::kVersion),
                        tr("install both from one build"));
}

void checkLanguage(Diagnosis& diagnosis, const Installation& installation) {
    diagnosis.good(tr("language"),
                   installation.language + u", " + sourceText(installation.languageSource));
    if (installation.moduleFile.IsEmpty()) {
        diagnosis.wrong(
            tr("language module"),
            tr("{0}, so that no rule file can be read", textsFault(installation.triedModule)),
            tr(kReinstall));
        return;
    }
    diagnosis.good(tr("language module"), installation.moduleFile);
    if (installation.triedModule == installation.wantedModule) return;
    const CStringW text = textsFault(installation.wantedModule);
    // A language may well have no texts of its own; a module that is there ought to load.
    if (corvane::LoadedModule(installation.wantedModule).fault().empty())
        diagnosis.note(installation.language, tr("{0}: English is used", text));
    else
        diagnosis.wrong(installation.language, text, tr(kReinstall));
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
            diagnosis.wrong(
                link, tr("{0} is not there, so that nothing that links it starts", folder + link),
                tr("let the link lead to {0}, or install the library again", file));
    }
}

/// A program that finds another library than the one of its own tree mixes two installations.
void checkTree(Diagnosis& diagnosis, const Installation& installation) {
    std::error_code failed;
    const std::filesystem::path program =
        std::filesystem::read_symlink("/proc/self/exe", failed).parent_path().parent_path();
    const std::filesystem::path library = placeOf(shownPath(installation.installFolder));
    if (failed || !std::filesystem::exists(program / "lib", failed) || program == library) return;
    diagnosis.note(tr("library"), tr("it is of another tree than the program, which is in {0}",
                                     program.u16string()));
}

/// What is more than plain is read by a module of its own, which a run of plain files never misses.
void checkParser(Diagnosis& diagnosis) {
    QorXMLDocument document;
    CStringW text = u"<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>";
    document.LoadFromXMLString(text);
    const corvane::XMLFault fault = corvane::LastXMLFault(document);
    if (!fault.message.IsEmpty()) diagnosis.wrong(tr("XML parser"), fault.message, tr(kReinstall));
}

}  // namespace

void checkInstallation(Diagnosis& diagnosis) {
    diagnosis.section(tr("Installation"));
    const Installation installation = corvane::GetInstallation();
    checkLibrary(diagnosis, installation);
    checkTree(diagnosis, installation);
    checkLinks(diagnosis, installation);
    checkLanguage(diagnosis, installation);
    if (installation.englishFile.IsEmpty() && !installation.moduleFile.IsEmpty())
        diagnosis.wrong(
            tr("English module"),
            textsFault(installation.installFolder + u"\\Lang\\english\\CorvaneFrameworkResu.dll"),
            tr(kReinstall));
    checkParser(diagnosis);
}

void checkRegistry(Diagnosis& diagnosis) {
    const CStringW subject = tr("registry");
    const CStringW folder = corvane::GetEnvironmentText(u"CORVANE_REGISTRY_DIR");
    diagnosis.noteRelative(subject, folder);
    if (!folder.IsEmpty() && presenceOfFolder(folder) != Presence::Readable) {
        diagnosis.wrong(subject, tr("{0} is no folder that can be read", folder),
                        tr("let --registry or CORVANE_REGISTRY_DIR name a folder, or neither"));
        return;
    }
    bool any = false;
    for (const corvane::RegistrySource& source : corvane::GetRegistrySources()) {
        const CStringW file = shownPath(source.file);
        if (presenceOfFile(file) == Presence::Missing) continue;
        any = true;
        if (!source.readable)
            diagnosis.wrong(lastName(file), tr("{0} cannot be read", file),
                            tr("put a file there that the user can read"));
        else if (!source.hasKeys)
            diagnosis.note(lastName(file), tr("{0} holds no key of the registry", file));
        else
            diagnosis.good(lastName(file), file);
    }
    if (any) return;
    diagnosis.note(subject, folder.IsEmpty()
                                ? tr("none of its files is there")
                                : tr("{0} has neither machine.reg nor user.reg", folder));
}
