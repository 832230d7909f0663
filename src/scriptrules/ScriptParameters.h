#pragma once

#include <set>
#include <vector>

#include <corvane/host/RunContext.h>
#include <corvane/rules/CQORConstraint.h>

namespace corvane::scriptrules {

/// A parameter type of a script's parameter that says the kind of its values: one of these numbers,
/// which are those of the parameter kinds, or one and kListOffset for a list of any length. With
/// any other parameter type the texts themselves tell the kind.
inline constexpr int kListOffset = 10;

/// The parameters in force for a material, in the order of the list and then of the constraints.
/// `lists` are the numbers that are a list even with a single value.
std::vector<ScriptParameter> scriptParameters(const CQorArray<CQorParamStorage*>& parameters,
                                              const CQorArray<CQORConstraint*>& constraints,
                                              const CStringW& material,
                                              const std::set<QorLong>& lists);

}  // namespace corvane::scriptrules
