#pragma once

#include <cstddef>
#include <vector>

#include <corvane/rules/CQorRule.h>

/// What the test reaches in a rule module that was built apart from the library.
struct RuleModuleProbe {
    CQorRule* (*makeRule)();  ///< Overrides all virtual operations, and sets some fields.
    int (*lastOperation)();   ///< The number of the override that ran last, from 1.
    /// Where the module sees the fields of rule, parameter, storage, array and constraint, in the
    /// order in which the interface gives them.
    std::vector<std::vector<std::ptrdiff_t>> (*fields)(const CQorRule& rule);
};
using RuleModuleProbeFunction = const RuleModuleProbe* (*)();
