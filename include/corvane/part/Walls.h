#pragma once

#include <array>
#include <vector>

#include "corvane/part/Model.h"

/// How thick the walls of a part are, and how narrow the air between them.
///
/// A wall is between two places of one solid that look away from each other: their outward normals
/// are at least 150 degrees apart. So neither the side around a corner counts nor the next facet of
/// a rounding, whatever the mesh is like. Two faces that meet at a sharp convex edge are the sides
/// of that edge and no wall, unless they are within 10 degrees of parallel where they are measured,
/// as in the middle of a lens: the edge of a chamfer, of a wedge or of a dovetail is thin by
/// geometry, but it is not a thin wall. Narrow air follows the same rule with the air in the place
/// of the material, concave edges in the place of convex ones, and any two solids.
///
/// Two measures are common. By ray, the thickness at a place is the length of the straight line
/// from it through the material, square to the surface. By sphere, it is the diameter of the
/// largest sphere inside the material that touches the surface at that place. On parallel sides
/// both agree; on tapered ones the sphere is the smaller.
///
/// Places are spread over all faces, denser on narrow ones and beside all vertices of the mesh, and
/// the thinnest ones are followed to where they are thinnest. Planes, cylinders, cones, spheres and
/// tori are measured exactly; other surfaces to the tolerance of Part::mesh().
namespace corvane::part {

/// Two opposite places of a wall, or of the air between two walls.
struct Thickness {
    double value = 0.0;              ///< mm; 0 where nothing was measured
    Vector point, opposite;          ///< on the two sides
    std::array<int, 2> faces{0, 0};  ///< that the two are on; equal for a pin or a hole
};

struct Walls {
    /// Whether the part encloses material: it has a solid, or an open shape with no more than
    /// cracks. If not, all else is empty.
    bool measurable = false;
    Thickness smallestByRay, smallestBySphere;
    Thickness largestBySphere;
    double typical =
        0.0;  ///< mm; half of the surface has thinner walls by sphere, half thicker ones
    std::vector<Thickness> places;       ///< each face's thinnest place by sphere, thinnest first
    std::vector<Thickness> placesByRay;  ///< the same by ray
    /// For each vertex of Part::mesh() the diameter in millimetres of the largest inner sphere
    /// there, whether the rule above calls it a wall or not; 0 where there is none. For colours.
    std::vector<float> byVertex;
};

}  // namespace corvane::part
