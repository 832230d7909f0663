#pragma once

#include <array>
#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

using StlFacet = std::array<std::array<float, 3>, 3>;

/// Joins the corners of facets, so that neighbours share their vertices; a facet that is no
/// triangle then is dropped. The facets have finite coordinates; those of the mesh are theirs times
/// `factor`, and its `faces` stay empty.
///
/// Corners are one point where each coordinate differs by at most two steps of a float of the size
/// of the part's largest coordinate along that axis: each facet rounds the point that it shares
/// with others for itself. What lies nearer together than that cannot be told from rounding. The
/// first such corner of the file is the vertex.
Mesh weld(const std::vector<StlFacet>& facets, double factor);

}  // namespace corvane::part::reading
