#pragma once

#include <vector>

#include "Topology.h"

namespace corvane::part::features {

/// Faces that may be one hole: round ones around one axis, and the flat steps between them.
struct HoleGroup {
    std::vector<int> round, steps;
};

/// The groups that hold a concave cylinder or cone, in the order of their first faces.
std::vector<HoleGroup> groupRoundFaces(const Topology& topology, const Axes& axes);

}  // namespace corvane::part::features
