#include <algorithm>
#include <optional>

#include <corvane/host/RuleModule.h>
#include <corvane/platform/LoadedModule.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"
#include "files/ModuleFault.h"
#include "files/RuleModules.h"

namespace {

/// Modules of rules by their folders, in the order in which a rule file's module is looked for.
class RuleModuleCheck {
public:
    explicit RuleModuleCheck(Diagnosis& diagnosis) : diagnosis_(diagnosis) {}

    bool any() const { return !names_.empty(); }

    void checkFolder(const CStringW& folder, bool isAsked) {
        const std::optional<std::vector<CStringW>> names = filesIn(folder);
        if (!names && (isAsked || presenceOfFolder(folder) != Presence::Missing))
            diagnosis_.wrong(tr("folder"), tr("{0} is no folder that can be read", folder),
                             isAsked ? tr("let --modules name a folder that the user can read")
                                     : tr("let the user read the folder"));
        if (!names) return;
        for (const CStringW& name : *names)
            if (RuleModules::isModuleName(name)) checkModule(folder, name);
    }

private:
    void checkModule(const CStringW& folder, const CStringW& name) {
        const CStringW path = shownPath(folder + u"\\" + name);
        if (std::ranges::find(names_, name) != names_.end()) {
            diagnosis_.note(name, tr("{0} is hidden by the module of an earlier folder", path));
            return;
        }
        names_.push_back(name);
        const corvane::LoadedModule module(path);
        if (!module && module.fault().empty())
            diagnosis_.wrong(name, tr("{0} is no file", path),
                             tr("put nothing but rule modules there"));
        else if (!module)
            diagnosis_.wrong(name, moduleFault(module, path),
                             tr("install what it needs, or build it for this library"));
        else if (!module.function<CreateQorRuleFunction>(kCreateQorRuleName))
            diagnosis_.wrong(
                name, tr("{0} is no rule module: it does not export {1}", path, kCreateQorRuleName),
                tr("put nothing but rule modules there"));
        else
            diagnosis_.good(name, path);
    }

    Diagnosis& diagnosis_;
    std::vector<CStringW> names_;
};

}  // namespace

void checkRuleModules(Diagnosis& diagnosis, const std::vector<CStringW>& folders) {
    diagnosis.section(tr("Rule modules"));
    const RuleModules modules(folders);
    RuleModuleCheck check(diagnosis);
    for (const CStringW& folder : modules.folders()) {
        check.checkFolder(folder, std::ranges::find(folders, folder) != folders.end());
    }
    if (!check.any())
        diagnosis.note(tr("modules"), tr("none in {0}", shownPath(modules.folders().back())));
}
