#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include <corvane/base/Version.h>
#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/CQorParameter.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/rules/ModuleRule.h>

namespace corvane {

/// The interface between hosts, library and rule modules: its version and the sizes of what they
/// share, as one number. The version is that of the library's name, which rises when an order of
/// fields or of virtual operations or a meaning changes; the sizes tell builds with another
/// standard library or other settings apart.
inline constexpr std::uint64_t kRuleInterface = [] {
    std::uint64_t number = kInterfaceVersion;
    for (const std::size_t size :
         {sizeof(CQorRule), sizeof(CQorParameter<double>), sizeof(CQorParameter<CStringW*>),
          sizeof(CQorParamStorage), sizeof(CQORConstraint), sizeof(ModuleRule), sizeof(CStringW)})
        number = number * 4099 + size;  // a prime above each of the sizes
    return number;
}();

/// The signature of the export by which a rule module says with which kRuleInterface it was built.
/// A host makes no rule of a module that says another one than its own. A module without the export
/// is not checked.
using RuleInterfaceFunction = std::uint64_t (*)();
/// The name of that export.
inline constexpr const char* kRuleInterfaceName = "CorvaneRuleInterface";

}  // namespace corvane
