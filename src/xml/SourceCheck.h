#pragma once

#include <cstddef>
#include <string_view>

namespace corvane::xml {

/// The most tokens of an enumerated attribute type.
constexpr std::size_t kMostTokens = 500;

/// What in a source, or in the text of an entity, would cost the parser the square of its size: a
/// tag with too many attributes or an enumeration with too many tokens. Null when there is nothing.
const char* excessIn(std::string_view text);

}  // namespace corvane::xml
