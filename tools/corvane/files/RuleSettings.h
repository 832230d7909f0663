#pragma once

#include <map>
#include <string>
#include <utility>

#include "lint/SourceTree.h"

/// What the element of a rule says, by names that a person knows: "Severity", "parameter 5011
/// Value", "constraint Material ABS, parameter 5011 Value".
using RuleSettings = std::map<std::string, std::string>;

/// Rules by their names, case ignored, each with how many of that name come before it.
using RulesByName = std::map<std::pair<std::string, int>, RuleSettings>;

/// The rules of a rule file or an index, from its document element. What is no rule counts as one
/// without a name.
RulesByName rulesOf(const lint::Element& root);
