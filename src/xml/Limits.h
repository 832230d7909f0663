#pragma once

#include <cstddef>
#include <string_view>

namespace corvane::xml {

// What loads and edits refuse alike, so that what an edit makes can be read again. The parser
// compares each attribute of an element with all others, and looks for each prefix among all that
// are in scope.
constexpr std::size_t kMostAttributes = 10'000;  ///< Of one element.
constexpr std::size_t kMostPrefixes = 1'000;     ///< In scope at one element.

/// The most tokens of an enumerated attribute type, which the parser compares with one another.
constexpr std::size_t kMostTokens = 500;

/// What in a source, or in the text of an entity, would cost the parser the square of its size: a
/// tag with too many attributes or an enumeration with too many tokens. Null when there is nothing.
const char* excessIn(std::string_view text);

}  // namespace corvane::xml
