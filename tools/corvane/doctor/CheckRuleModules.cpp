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

/// Modules of rules by their folders, in the order in which a rule file's module is sought.
class RuleModuleCheck {
public:
    explicit RuleModuleCheck(Diagnosis& diagnosis) : diagnosis_(diagnosis) {}

    bool any() const { return !names_.empty(); }

    void checkFolder(const CStringW& folder, bool isAsked) {
        const std::optional<std::vector<CStringW>> names = filesIn(folder);
        if (!names && (isAsked || presenceOfFolder(folder) != Presence::Missing))
            diagnosis_.wrong(u"folder", folder + u" is no folder that can be read",
                             isAsked ? u"let --modules name a folder that the user can read"
                                     : u"let the user read the folder");
        if (!names) return;
        for (const CStringW& name : *names)
            if (RuleModules::isModuleName(name)) checkModule(folder, name);
    }

private:
    void checkModule(const CStringW& folder, const CStringW& name) {
        const CStringW path = shownPath(folder + u"\\" + name);
        if (std::ranges::find(names_, name) != names_.end()) {
            diagnosis_.note(name, path + u" is hidden by the module of an earlier folder");
            return;
        }
        names_.push_back(name);
        const corvane::LoadedModule module(path);
        if (!module && module.fault().empty())
            diagnosis_.wrong(name, path + u" is no file", u"put nothing but rule modules there");
        else if (!module)
            diagnosis_.wrong(name, moduleFault(module, path),
                             u"install what it needs, or build it for this library");
        else if (!module.function<CreateQorRuleFunction>(kCreateQorRuleName))
            diagnosis_.wrong(
                name,
                path + u" is no rule module: it does not export " + CStringW(kCreateQorRuleName),
                u"put nothing but rule modules there");
        else
            diagnosis_.good(name, path);
    }

    Diagnosis& diagnosis_;
    std::vector<CStringW> names_;
};

}  // namespace

void checkRuleModules(Diagnosis& diagnosis, const std::vector<CStringW>& folders) {
    diagnosis.section(u"Rule modules");
    const RuleModules modules(folders);
    RuleModuleCheck check(diagnosis);
    for (const CStringW& folder : modules.folders()) {
        check.checkFolder(folder, std::ranges::find(folders, folder) != folders.end());
    }
    if (!check.any()) diagnosis.note(u"modules", u"none in " + shownPath(modules.folders().back()));
}
