#pragma once

#include <cstddef>

namespace corvane::xml {

// What loads and edits refuse alike, so that every document that an edit makes can be read again.
// The parser compares each attribute of an element with all others, and looks for each prefix among
// all that are in scope.
constexpr std::size_t kMostAttributes = 10'000;  ///< Of one element.
constexpr std::size_t kMostPrefixes = 1'000;     ///< In scope at one element.

}  // namespace corvane::xml
