#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "lint/Report.h"

// The form of a rule file: docs/rule-files.md in terms of elements and attributes. The names are
// the same in every language.
namespace lint {

/// What the rule of an element is known to read.
struct RuleKnowledge {
    enum class Kind { Compiled, Script, Unknown };
    Kind kind = Kind::Unknown;
    /// Of a compiled rule whose module is there: its parameters' kinds (Type_e) by number.
    std::optional<std::map<std::int64_t, int>> parameters;
    /// Of a script rule with an entry in the index: the parameters of that entry.
    std::set<std::int64_t> indexParameters;
    /// The element overrides an included rule, so that its parameters may have a name alone.
    bool isOverride = false;
};

/// What a severity or a category may be.
struct Vocabulary {
    std::set<std::int64_t> severities;
    std::set<std::string> categories;
};

/// Looks at the document element of a rule file or an index: which elements, attributes and texts
/// no reader looks at.
void checkForm(const Element& root, Report& report);

/// Looks at the values of one rule element.
void checkValues(const Element& rule, const RuleKnowledge& known, const Vocabulary& words,
                 Report& report);

/// Decimal digits with an optional sign, white space around, in 32 bits; else a problem of the
/// place that `what` names, such as "Severity".
std::optional<std::int64_t> checkInteger(const std::string& text, Place place,
                                         const std::string& what, Report& report);

}  // namespace lint
