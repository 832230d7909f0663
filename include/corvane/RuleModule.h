#pragma once

// All that a module of compiled rules needs. A rule derives from corvane::ModuleRule, and the
// module ends in a table of its rules:
//
//     constexpr corvane::RuleEntry kRules[] = {
//         {u"Minimum wall", u"No wall is too thin", u"wallrules",
//         corvane::MakeModuleRule<WallRule>},
//     };
//     CORVANE_RULE_MODULE(kRules)
//
// docs/rule-modules.md is the guide.

#include <cstdint>

#include <corvane/app/ModuleStrings.h>
#include <corvane/app/StringTable.h>
#include <corvane/base/ModuleExport.h>
#include <corvane/host/Finding.h>
#include <corvane/host/QORICadSys.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/host/RuleInterface.h>
#include <corvane/host/RuleModule.h>
#include <corvane/host/RunContext.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/rules/ModuleRule.h>
#include <corvane/rules/ParameterValues.h>

/// Says in a module which interface to rules it was built with, so that a host can refuse one that
/// is out of date. For modules that write CreateQorRule by hand; CORVANE_RULE_MODULE has it.
#define CORVANE_RULE_MODULE_STAMP                                \
    CORVANE_MODULE_EXPORT std::uint64_t CorvaneRuleInterface() { \
        return ::corvane::kRuleInterface;                        \
    }

#ifdef CORVANE_MODULE_HAS_STRINGS
#define CORVANE_USE_MODULE_STRINGS \
    const ::corvane::StringTableScope moduleTexts(::corvane::ModuleStrings());
#else
/// In a module with STRINGS of corvane_add_rule_module: parameters get their names from its texts.
#define CORVANE_USE_MODULE_STRINGS
#endif

/// The exports of a rule module whose rules an array of corvane::RuleEntry names.
#define CORVANE_RULE_MODULE(rules)                                            \
    CORVANE_RULE_MODULE_STAMP                                                 \
    CORVANE_MODULE_EXPORT CQorRule* CreateQorRule(const char16_t* ruleName) { \
        CORVANE_USE_MODULE_STRINGS                                            \
        return ::corvane::MakeNamedRule(rules, ruleName);                     \
    }
