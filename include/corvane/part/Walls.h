#pragma once

#include <array>
#include <vector>

#include "corvane/part/Model.h"

/// How thick the walls of a part are, how narrow the air between them, how the part leaves a mould
/// and where it hangs over.
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
/// tori are measured exactly; other surfaces to the tolerance of Part::mesh(). A mesh of very many
/// slivers that overlap is measured at fewer places, so that it takes seconds. The same part always
/// gives the same result.
namespace corvane::part {

/// Two opposite places of a wall, or of the air between two walls.
struct Thickness {
    double value = 0.0;              ///< mm; 0 where nothing was measured
    Vector point;                    ///< on one side
    Vector opposite;                 ///< on the other one
    std::array<int, 2> faces{0, 0};  ///< that the two are on; equal for a pin or a hole
};

/// How thick the walls of a part are.
struct Walls {
    /// Whether the part encloses material: it has a solid, or an open shape with no more than
    /// cracks. If not, all else is empty.
    bool measurable = false;
    Thickness smallestByRay;     ///< the thinnest place by ray
    Thickness smallestBySphere;  ///< the thinnest place by sphere
    /// The thickest wall: of all places where the sphere that touches there is a wall's by the rule
    /// above, the one with the largest. A larger sphere may fit inside the part elsewhere.
    Thickness largestBySphere;
    double typical =
        0.0;  ///< mm; half of the surface has thinner walls by sphere, half thicker ones
    /// Each face's thinnest place by sphere. The 500 faces with the thinnest ones have up to seven
    /// more: between any two places of a face the wall is thicker than at either by a fifth, or
    /// there is none. Thinnest first.
    std::vector<Thickness> places;
    std::vector<Thickness> placesByRay;  ///< the same by ray
    /// For each vertex of Part::mesh() the diameter in millimetres of the largest inner sphere
    /// there, whether the rule above calls it a wall or not; 0 where there is none. Where vertices
    /// crowd, as around a small hole, one speaks for those beside it. For colours.
    std::vector<float> byVertex;
};

/// Narrow air: slots, holes, the room between ribs, the clearance between the solids of an
/// assembly. Where solids touch there is no air.
struct Gaps {
    /// By sphere, the narrowest place of each pair of faces, and more where the air between them
    /// is narrow at separate places, as with walls. Narrowest first. A hole has both of its sides
    /// on one face.
    std::vector<Thickness> places;
};

/// Which half of a mould with two halves forms a face.
enum class MouldHalf {
    Pull,      ///< the one that leaves in the pull direction
    Opposite,  ///< the one that leaves against it
    Either,    ///< a face parallel to the pull
    Both       ///< the face turns from one to the other: the parting line crosses it
};

/// How one face leaves the mould.
struct FaceDraft {
    int face = 0;                        ///< its number
    MouldHalf half = MouldHalf::Either;  ///< which half forms it
    /// Degrees between the face and the pull direction, 0 to 90, where they are least: 0 for an
    /// upright wall and for a face that the parting line crosses, 90 for one square to the pull.
    double angle = 0.0;
    double area = 0.0;      ///< mm2
    Vector point;           ///< where the angle is least
    bool undercut = false;  ///< part of the face can be reached from neither side
};

/// Connected faces that neither half of the mould can form.
struct Undercut {
    std::vector<int> faces;  ///< their numbers
    Vector point;            ///< in its middle, on the surface
    double area = 0.0;       ///< mm2 that cannot be reached
    Vector slide;            ///< unit: a slide that leaves this way frees it; null if none does, or
                             ///< after some seconds of search for those of larger ones
    double travel = 0.0;     ///< mm that the slide must move
};

/// How a part leaves a mould of two halves.
struct Draft {
    Vector pull;                      ///< unit; null if the part cannot be measured
    std::vector<FaceDraft> faces;     ///< every face, the least angle first
    std::vector<Undercut> undercuts;  ///< the largest first
    /// Edges between the halves, with upright faces on the side of the pull. Faces with
    /// MouldHalf::Both have the parting line within.
    std::vector<int> partingEdges;
};

/// How an overhang is held.
enum class OverhangKind {
    Cantilever,  ///< held from one side
    Bridge,      ///< held from two sides across
    Island       ///< held from nowhere: it begins in the air
};

/// Connected faces that look down too flatly to be built layer by layer without a support.
struct Overhang {
    std::vector<int> faces;                        ///< their numbers
    OverhangKind kind = OverhangKind::Cantilever;  ///< how it is held
    double angle = 0.0;  ///< degrees from the horizontal where it is flattest; 0 for a ceiling
    double area = 0.0;   ///< mm2
    /// mm: across a bridge; from the wall to the farthest place of a cantilever; the greatest
    /// extent of an island. Measured horizontally.
    double span = 0.0;
    Vector point;  ///< the place farthest from what holds it
};

}  // namespace corvane::part
