#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::part::reading {

/// For each thing the numbers, from 0, of the things that it refers to.
using References = std::vector<std::vector<std::uint32_t>>;

/// Why nobody can follow the references to their ends, one within the other: the first thing found
/// that refers to itself at last, or at which too many stand in a row or are in all.
struct ReferenceFault {
    enum class Kind { None, Cycle, TooDeep, TooMany };
    Kind kind = Kind::None;
    std::size_t thing = 0;
};

/// `most` is how many things may be found from one, each as often as it is referred to.
ReferenceFault checkReferences(const References& references, double most = 1e300);

/// Why the entities of a STEP text cannot be followed; empty if they can. The kernel follows them
/// while it loads the file.
std::string stepFault(std::string_view text);

}  // namespace corvane::part::reading
