#pragma once

#include <vector>

#include "corvane/part/Model.h"

#include "Strips.h"

namespace corvane::part::facets {

/// Strips that lie on one surface, edge to edge.
struct Region {
    Surface surface;       ///< Other where the strips meet smoothly on no elementary one
    bool concave = false;  ///< the material is around it
    std::vector<std::uint32_t> strips;
    std::vector<std::uint32_t> facets;  ///< empty while it grows
};

/// The regions of the mesh, each strip in one: curved ones on the simplest surface that passes all
/// their vertices and that holds most strips around, flat faces, and freeform rests.
std::vector<Region> findRegions(const Strips& strips);

/// Facets of one curved face meet at no more than this, in degrees.
inline constexpr double kSmoothAngle = 35.0;

}  // namespace corvane::part::facets
