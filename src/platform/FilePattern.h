#pragma once

#include <string_view>

namespace corvane::platform {

/// True when the whole name fits the pattern, in which "*" stands for any run of units, an empty
/// one too, and "?" for exactly one; case is ignored.
bool matchesPattern(std::u16string_view name, std::u16string_view pattern);

}  // namespace corvane::platform
