#pragma once

#include "Regions.h"

namespace corvane::part::facets {

/// Gives each region its facets, those of its strips first. Near a border where two surfaces are
/// tangent a strip can reach from one to the other: there each facet goes to the region whose
/// surface its corners fit clearly better.
void settleFacets(const Strips& strips, const MeshTopology& topology, std::vector<Region>& regions);

}  // namespace corvane::part::facets
