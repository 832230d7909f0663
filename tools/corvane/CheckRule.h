#pragma once

#include <vector>

#include <corvane/text/CStringW.h>

#include "LoadedRule.h"

enum class Verdict { Passed, Failed, NotRun };

/// How a rule ended, and why, one reason a line.
struct Outcome {
    Verdict verdict = Verdict::Passed;
    std::vector<CStringW> reasons;
};

/// Runs a rule against the part, an empty text for none.
Outcome checkRule(const LoadedRule& loaded, const CStringW& part);
