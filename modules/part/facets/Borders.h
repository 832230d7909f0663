#pragma once

#include "corvane/part/Model.h"

#include "Strips.h"

namespace corvane::part::facets {

/// Adds the edges between the faces that `mesh.faces` says, and their loops, to the model, which
/// has the faces. Points of a curve are within `tolerance` of it.
void addBorders(Model& model, const Mesh& mesh, const MeshTopology& topology, double tolerance);

}  // namespace corvane::part::facets
