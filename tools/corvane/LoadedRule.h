#pragma once

#include <memory>
#include <vector>

#include <corvane/rules/CQorRule.h>

#include "RuleFile.h"
#include "RuleModules.h"

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
    QorLong line = 0;                ///< Of its element in the rule file.
    std::vector<CStringW> problems;  ///< In a user's words.

    bool isScript() const { return origin == RuleOrigin::Index || origin == RuleOrigin::RuleFile; }
};

/// Makes the rule that an element describes. Whatever is wrong with it stands in the result.
LoadedRule loadRule(QorXMLNode& element, RuleModules& modules);
