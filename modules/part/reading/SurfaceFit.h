#pragma once

#include <optional>
#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

struct Sample {
    Vector point, normal;  // unit, out of the material
};

/// The surface of the kind that the samples' normals tell of, if they tell of one; it need not pass
/// the samples closely. A plane's axis is the mean normal.
std::optional<Surface> guess(SurfaceKind kind, const std::vector<Sample>& samples);

/// The surface near `start`, of its round kind, from which the points are away least, as the sum of
/// the squares. Gives up early what does not come within the tolerance.
Surface refined(const Surface& start, const std::vector<Vector>& points, double tolerance);

}  // namespace corvane::part::reading
