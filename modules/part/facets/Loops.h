#pragma once

#include "corvane/part/Model.h"

#include "Strips.h"

namespace corvane::part::facets {

/// Adds the loops of edges around each face to the model. `edgeOf` tells the number of the edge
/// that each edge of the topology is part of, 0 within a face.
void addLoops(Model& model, const Mesh& mesh, const MeshTopology& topology,
              const std::vector<int>& edgeOf);

/// Whether the facet goes around from the edge's first vertex to its second.
bool isForward(const std::array<std::uint32_t, 3>& facet, const reading::MeshEdge& edge);

}  // namespace corvane::part::facets
