#pragma once

#include "SurfaceFit.h"

namespace corvane::part::reading {

/// The plane, cylinder, sphere or cone that passes within `tolerance` of all samples, with normals
/// that agree to `slack` degrees; none if no such surface does. A plane's axis is the mean normal.
std::optional<Surface> recognise(const std::vector<Sample>& samples, double tolerance,
                                 double slack);

/// Whether the normal points to the axis or centre: the material is around such a face.
bool isConcave(const Surface& surface, const Sample& sample);

}  // namespace corvane::part::reading
