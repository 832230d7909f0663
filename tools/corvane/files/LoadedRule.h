#pragma once

#include <memory>
#include <vector>

#include <corvane/host/RunContext.h>
#include <corvane/rules/CQorRule.h>

#include "files/RuleFile.h"
#include "files/RuleModules.h"
#include "results/Remark.h"

/// Where a rule's definition comes from.
enum class RuleOrigin { Module, Index, RuleFile, Nowhere };

/// A rule owns its constraints only until it is asked to clear them, so its owner asks.
struct RuleDeleter {
    void operator()(CQorRule* rule) const {
        rule->ClearConstraints();
        delete rule;
    }
};

/// A rule as a rule file names it.
struct LoadedRule {
    std::unique_ptr<CQorRule, RuleDeleter> rule;  ///< Never null; a failed rule for Nowhere.
    RuleOrigin origin = RuleOrigin::Nowhere;
    QorLong line = 0;                       ///< Of its element in the rule file.
    CStringW scriptFolder;                  ///< Of its script; empty for the configured folder.
    bool isRefused = false;                 ///< The rule asks for what this program does not do.
    std::vector<results::Remark> problems;  ///< In a user's words.

    /// False when there is nothing to run; `problems` says why.
    bool mayRun() const { return origin != RuleOrigin::Nowhere && !isRefused; }
    /// What the script is given for a part of that material; nothing for a rule of a module.
    std::vector<corvane::ScriptParameter> scriptParameters(const CStringW& material) const;

    bool isScript() const { return origin == RuleOrigin::Index || origin == RuleOrigin::RuleFile; }
};

/// Makes the rule that an element of a file describes. Whatever is wrong with it is in the
/// result.
LoadedRule loadRule(const RuleFile& file, QorLong index, RuleModules& modules);
