#pragma once

#include <string_view>

#include <corvane/rules/QORRuleCategory.h>

namespace corvane::rules {

/// The text of a category in the user's language; empty for a category that has none and for any
/// number outside the enumeration.
std::u16string_view categoryText(QORRuleCategory_e category);

/// The number of the category with that text. Texts of no category, and those of 7 and 13, are
/// category 6; an empty text is -1.
int categoryOf(std::u16string_view text);

}  // namespace corvane::rules
