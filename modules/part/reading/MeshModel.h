#pragma once

#include "Reading.h"

namespace corvane::part::reading {

/// The model of a surface of facets: its faces are regions of facets that meet smoothly, recognised
/// as plane, cylinder, cone or sphere where they are one, and its edges are the borders of regions.
/// `mesh.faces` is made here.
Result modelOf(Mesh mesh);

}  // namespace corvane::part::reading
