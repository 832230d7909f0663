#pragma once

#include <cstdint>
#include <string_view>

#include <corvane/base/Export.h>

namespace corvane {

/// Numbers of the string resources, in the groups of their use. They are part of the rule file's
/// format: reader and writer take the names of elements and attributes by these numbers.
namespace resource {

// Script failures.
inline constexpr std::uint32_t kScriptCaption = 50;  ///< Caption of the message.
inline constexpr std::uint32_t kScriptFailed = 51;   ///< One %s: the rule's name.
inline constexpr std::uint32_t kScriptMissing = 52;  ///< Two %s, both the rule's name.
inline constexpr std::uint32_t kErrorSource = 53;    ///< Heading of the line that failed.
inline constexpr std::uint32_t kErrorLine = 54;      ///< Heading of its number.
inline constexpr std::uint32_t kErrorNumber = 55;    ///< Heading of the error number.
inline constexpr std::uint32_t kErrorCode = 56;      ///< Heading of the error code.

// A new user-defined rule.
inline constexpr std::uint32_t kNewRuleName = 58;         ///< Its name.
inline constexpr std::uint32_t kNewRuleDescription = 59;  ///< Its description.

// The rule element: "Attr" is an attribute, "Node" an element.
inline constexpr std::uint32_t kRuleNameAttr = 3000;         ///< Attribute of the name.
inline constexpr std::uint32_t kRuleDescriptionAttr = 3001;  ///< Attribute of the description.
inline constexpr std::uint32_t kRuleSourceAttr = 3002;       ///< Attribute of the source.
inline constexpr std::uint32_t kRuleSeverityAttr = 3003;     ///< Attribute of the severity.
inline constexpr std::uint32_t kRuleNode = 3004;             ///< Element of the rule.
inline constexpr std::uint32_t kRuleStatusAttr = 3005;       ///< Attribute of the status.
inline constexpr std::uint32_t kRuleLifeStatusAttr = 3006;   ///< Attribute of the life status.
inline constexpr std::uint32_t kRuleModuleAttr = 3008;       ///< Attribute of the module.
inline constexpr std::uint32_t kRuleCategoryAttr = 3009;     ///< Attribute of the category.
inline constexpr std::uint32_t kRuleFileAttr = 3011;         ///< Attribute of the file.

/// The message for an illegal parameter kind.
inline constexpr std::uint32_t kIllegalParameter = 3020;

// What the larger rule element has in addition.
inline constexpr std::uint32_t kEnginesNode = 3022;     ///< Element of the engines.
inline constexpr std::uint32_t kEngineAttr = 3023;      ///< Also the name of the engine's element.
inline constexpr std::uint32_t kGuidAttr = 3024;        ///< Attribute of the engine's GUID.
inline constexpr std::uint32_t kMajorAttr = 3025;       ///< Attribute of its major version.
inline constexpr std::uint32_t kMinorAttr = 3026;       ///< Attribute of its minor version.
inline constexpr std::uint32_t kLcidAttr = 3027;        ///< Attribute of its locale.
inline constexpr std::uint32_t kModuleFileAttr = 3028;  ///< Attribute of the module file.
inline constexpr std::uint32_t kRuleCategoryTextAttr = 3029;  ///< Attribute of the category text.
inline constexpr std::uint32_t kCategoriesNode = 3030;        ///< Element of the categories.
inline constexpr std::uint32_t kCategoryNode = 3031;  ///< Also the name of its one attribute.

}  // namespace resource

/// The text of a string resource in the user's language; empty when there is none. It is
/// zero-terminated and lives as long as the library is loaded.
CORVANE_EXPORT std::u16string_view ResourceText(std::uint32_t number);

}  // namespace corvane
