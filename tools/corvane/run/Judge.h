#pragma once

#include <corvane/host/RunContext.h>

#include "files/LoadedRule.h"
#include "results/Result.h"

/// Runs a rule in a context and tells how it judged the part: what the rule says of itself, the
/// parameters in force, verdict, findings, reasons and time. Raises nothing. What belongs to the
/// rule's file and its components, the caller adds.
results::RuleResult judge(const LoadedRule& loaded, const corvane::RunContext& context);
