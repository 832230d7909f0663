#pragma once

#include <string>
#include <string_view>

namespace corvane::part::reading {

/// Why an IGES text cannot be read safely; empty for one that can. The kernel takes what stands in
/// the columns of a line for numbers and places of other lines.
std::string igesFault(std::string_view text);

}  // namespace corvane::part::reading
