#include <corvane/app/Installation.h>
#include <corvane/platform/ComponentRegistration.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/IScriptProcessor.h>
#include <corvane/scriptrules/RegisteredTypeLibraries.h>
#include <corvane/scriptrules/TypeLibDetails.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"
#include "doctor/ScriptTrial.h"
#include "files/ModuleFault.h"
#include "run/RunReason.h"

using corvane::ModuleConfiguration;
using corvane::RegisteredTypeLibrary;

namespace {

/// A trial run looks for the settings folder, and finding none makes it.
bool mayTry(const ModuleConfiguration& configuration) {
    return presenceOfFolder(configuration.settingsFolder) != Presence::Missing;
}

CStringW joined(const std::vector<CStringW>& lines) {
    CStringW text;
    for (const CStringW& line : lines)
        text += (text.IsEmpty() ? CStringW() : CStringW(u"; ")) + line;
    return text;
}

/// How to register the host.
CStringW registering() {
    const CStringW folder = corvane::GetEnvironmentText(u"CORVANE_REGISTRY_DIR");
    if (folder.IsEmpty()) return tr(kReinstall);
    return tr("add the keys of {0}/registry/machine.reg to machine.reg in {1}",
              shownPath(corvane::GetInstallation().installFolder), folder);
}

bool checkHostModule(Diagnosis& diagnosis, const corvane::ComponentRegistration& host) {
    const corvane::LoadedModule module(host.module);
    if (module) {
        diagnosis.good(tr("module"), module.file());
        return true;
    }
    diagnosis.wrong(tr("module"), moduleFault(module, host.module),
                    tr("put the module there with what it needs, or register another path"));
    return false;
}

CStringW versionText(std::uint32_t major, std::uint32_t minor, std::uint32_t lcid) {
    CStringW locale;
    locale.Format(u"%x", lcid);
    return tr("version {0}.{1}, locale {2}", major, minor, locale);
}

class EngineCheck {
public:
    EngineCheck(Diagnosis& diagnosis, const RegisteredTypeLibrary& library, bool mayTry)
        : diagnosis_(diagnosis),
          library_(library),
          mayTry_(mayTry),
          subject_(library.file.IsEmpty() ? tr("type library") : CStringW(lastName(library.file))) {
    }

    void check() {
        if (library_.file.IsEmpty()) {
            diagnosis_.wrong(subject_, tr("{0} has no file for 64-bit use", registration()),
                             tr("register its file below the key \"win64\""));
        } else if (!library_.found) {
            diagnosis_.note(subject_,
                            tr("{0} is hidden by a later version of the library", registration()));
        } else {
            checkFile();
        }
    }

private:
    CStringW registration() const {
        return library_.guid + u" " + library_.version + u" " + library_.lcid;
    }

    void checkFile() {
        const CStringW path = shownPath(library_.file);
        const Presence presence = presenceOfFile(path);
        TypeLibDetails details(path);
        if (details.ReadTypeLibAttributes())
            checkEngine(path + u", " +
                        versionText(details.majorVersion, details.minorVersion, details.lcid));
        else if (presence == Presence::Missing)
            diagnosis_.wrong(subject_, tr("there is no {0}", path),
                             tr("correct the path in the registry"));
        else if (presence == Presence::Unreadable)
            diagnosis_.wrong(subject_, tr("{0} cannot be read", path),
                             tr("let the user read the file"));
        else
            diagnosis_.wrong(subject_, tr("{0} is no type library, or a damaged one", path),
                             tr("put a sound type library there, or register another"));
    }

    void checkEngine(const CStringW& text) {
        if (!mayTry_) {
            diagnosis_.good(subject_, text);
            return;
        }
        const corvane::ScriptRun run = tryHost(library_.file);
        if (run.status == corvane::ScriptRunStatus::EngineRefused)
            diagnosis_.wrong(
                subject_, joined(reasonsOf(run)),
                tr("put the engine's module beside its type library, with what it needs"));
        else
            diagnosis_.good(subject_, text);
    }

    Diagnosis& diagnosis_;
    const RegisteredTypeLibrary& library_;
    bool mayTry_;
    CStringW subject_;
};

}  // namespace

void checkHost(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    const CStringW registration = tr("registration");
    diagnosis.section(tr("Script host"));
    const corvane::ComponentRegistration host =
        corvane::FindComponent(IScriptProcessor::kProgramId);
    if (host.module.empty()) {
        const CStringW text = host.classId.empty()
                                  ? tr("{0} is not registered", IScriptProcessor::kProgramId)
                                  : tr("its class {0} has no module", host.classId);
        // A site without scripts needs no host.
        if (configuration.scriptFolder)
            diagnosis.wrong(registration, text, registering());
        else
            diagnosis.note(registration, text + tr(": no script rule can run"));
        return;
    }
    diagnosis.good(registration, tr("{0}, class {1}", IScriptProcessor::kProgramId, host.classId));
    if (!checkHostModule(diagnosis, host) || !mayTry(configuration)) return;
    const corvane::ScriptRun run = tryHost({});
    if (isAccepted(run))
        diagnosis.good(tr("trial"), tr("the host can be created"));
    else
        diagnosis.wrong(tr("trial"), joined(reasonsOf(run)), tr("register a script host"));
}

void checkEngines(Diagnosis& diagnosis, const ModuleConfiguration& configuration) {
    diagnosis.section(tr("Engines of scripts"));
    const std::vector<RegisteredTypeLibrary> libraries = corvane::GetRegisteredTypeLibraries();
    if (libraries.empty()) diagnosis.note(tr("type libraries"), tr("none is registered"));
    for (const RegisteredTypeLibrary& library : libraries)
        EngineCheck(diagnosis, library, mayTry(configuration)).check();
}
