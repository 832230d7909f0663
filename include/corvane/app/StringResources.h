#pragma once

#include <cstdint>
#include <string_view>

#include <corvane/base/Export.h>

namespace corvane {

/// Numbers of the string resources, in the groups of their use. They are part of the rule file's
/// format: reader and writer take the names of elements and attributes by these numbers.
namespace resource {

// Script failures.
inline constexpr std::uint32_t kScriptCaption = 50;
inline constexpr std::uint32_t kScriptFailed = 51;   ///< One %s: the rule's name.
inline constexpr std::uint32_t kScriptMissing = 52;  ///< Two %s, both the rule's name.
inline constexpr std::uint32_t kErrorSource = 53;
inline constexpr std::uint32_t kErrorLine = 54;
inline constexpr std::uint32_t kErrorNumber = 55;
inline constexpr std::uint32_t kErrorCode = 56;

// A new user-defined rule.
inline constexpr std::uint32_t kNewRuleName = 58;
inline constexpr std::uint32_t kNewRuleDescription = 59;

// The rule element: "Attr" is an attribute, "Node" an element.
inline constexpr std::uint32_t kRuleNameAttr = 3000;
inline constexpr std::uint32_t kRuleDescriptionAttr = 3001;
inline constexpr std::uint32_t kRuleSourceAttr = 3002;
inline constexpr std::uint32_t kRuleSeverityAttr = 3003;
inline constexpr std::uint32_t kRuleNode = 3004;
inline constexpr std::uint32_t kRuleStatusAttr = 3005;
inline constexpr std::uint32_t kRuleLifeStatusAttr = 3006;
inline constexpr std::uint32_t kRuleModuleAttr = 3008;
inline constexpr std::uint32_t kRuleCategoryAttr = 3009;
inline constexpr std::uint32_t kRuleFileAttr = 3011;

/// The message for an illegal parameter kind.
inline constexpr std::uint32_t kIllegalParameter = 3020;

// What the larger rule element has in addition.
inline constexpr std::uint32_t kEnginesNode = 3022;
inline constexpr std::uint32_t kEngineAttr = 3023;  ///< Also the name of the engine's element.
inline constexpr std::uint32_t kGuidAttr = 3024;
inline constexpr std::uint32_t kMajorAttr = 3025;
inline constexpr std::uint32_t kMinorAttr = 3026;
inline constexpr std::uint32_t kLcidAttr = 3027;
inline constexpr std::uint32_t kModuleFileAttr = 3028;
inline constexpr std::uint32_t kRuleCategoryTextAttr = 3029;
inline constexpr std::uint32_t kCategoriesNode = 3030;
inline constexpr std::uint32_t kCategoryNode = 3031;  ///< Also the name of its one attribute.

}  // namespace resource

/// The text of a string resource in the user's language; empty when there is none. It is
/// zero-terminated and lives as long as the library is loaded.
CORVANE_EXPORT std::u16string_view ResourceText(std::uint32_t number);

}  // namespace corvane
