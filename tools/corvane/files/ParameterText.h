#pragma once

#include <vector>

#include <corvane/rules/CQorParamStorage.h>
#include <corvane/text/CStringW.h>

#include "results/Result.h"

/// What a parameter holds, in a user's words.
struct ParameterText {
    CStringW name;
    CStringW kind;    ///< "number", "text" and the like.
    bool on = false;  ///< Its status.
    std::vector<CStringW> values;
};

/// A storage of illegal kind has the kind "illegal" and nothing else.
ParameterText describe(const CQorParamStorage& storage);

/// The same for programs. A storage of illegal kind has no values.
results::Parameter valuesOf(const CQorParamStorage& storage);
