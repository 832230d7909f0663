#pragma once

#include "Reading.h"

namespace corvane::part::reading {

/// The model of a surface of facets: its faces are regions of facets that meet smoothly, recognised
/// as plane, cylinder, cone, sphere or torus where they are one, and its edges are the borders of
/// regions. The file holds the vertices to within `precision`. `mesh.faces` is made here.
Result modelOf(Mesh mesh, double precision);

}  // namespace corvane::part::reading
