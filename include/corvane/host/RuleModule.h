#pragma once

#include <corvane/base/Export.h>

class CQorRule;

/// The signature of the export "CreateQorRule" of a rule module: makes the rule of that name,
/// zero-terminated, with its parameters, or gives null when the module has no such rule. The caller
/// owns the rule and deletes it.
using CreateQorRuleFunction = CQorRule* (*)(const char16_t* ruleName);

/// The name of that export.
inline constexpr const char* kCreateQorRuleName = "CreateQorRule";
