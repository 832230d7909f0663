#pragma once

#include <map>
#include <vector>

#include <corvane/platform/LoadedModule.h>
#include <corvane/text/CStringW.h>

#include "results/Remark.h"

class CQorRule;

/// The rule modules of a run, each loaded once. Rules of a module must not outlive this object.
class RuleModules {
public:
    /// Sought in the given folders, in their order, then in "rules" beside the library.
    explicit RuleModules(const std::vector<CStringW>& folders);

    /// Where modules are looked for, in this order.
    const std::vector<CStringW>& folders() const { return folders_; }

    /// True for a name that ends like a shared module's.
    static bool isModuleName(const CStringW& file);

    /// Makes the rule of that name; the caller owns it. Null, with the reason in `problem`, when
    /// the module is missing, is no rule module or has no such rule. Of `file` only the name
    /// counts: a rule file chooses among the modules of the folders, and no other library.
    CQorRule* makeRule(const CStringW& file, const CStringW& ruleName, results::Remark& problem);

private:
    const corvane::LoadedModule& load(const CStringW& name);

    std::vector<CStringW> folders_;
    std::map<CStringW, corvane::LoadedModule> modules_;
};
