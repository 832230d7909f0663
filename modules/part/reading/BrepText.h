#pragma once

#include <string>
#include <string_view>

namespace corvane::part::reading {

/// Why a BREP text cannot be read safely; empty for one that can. The kernel believes every count
/// and number of an entry, and at a word where a number should be it waits for ever.
std::string brepFault(std::string_view text);

}  // namespace corvane::part::reading
