#pragma once

#include <string_view>

// Names and literals of the `Parameter` element. They are part of the rule file's format and the
// same in every language.
namespace corvane::rules::name {

inline constexpr std::u16string_view kParameter = u"Parameter";
inline constexpr std::u16string_view kName = u"Name";
inline constexpr std::u16string_view kNumber = u"Type";
inline constexpr std::u16string_view kStatus = u"Status";
inline constexpr std::u16string_view kOperator = u"Operator";
inline constexpr std::u16string_view kParameterType = u"ParameterType";
inline constexpr std::u16string_view kValue = u"Value";
inline constexpr std::u16string_view kRemarks = u"Remarks";
/// Followed by its number, from 1.
inline constexpr std::u16string_view kAttribute = u"Attribute";
/// How many attributes of a `Value` a reader looks at; a writer writes any number.
inline constexpr int kAttributesRead = 4;

// Flags, in parameters and constraints.
inline constexpr std::u16string_view kTrue = u"1";
inline constexpr std::u16string_view kFalse = u"0";

}  // namespace corvane::rules::name
