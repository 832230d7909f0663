#pragma once

#include <cstddef>
#include <optional>

#include "Mesh.h"

namespace meshengine {

/// Extent along x, y and z. The mesh has triangles.
Vector boundingSize(const Mesh& mesh);

double surfaceArea(const Mesh& mesh);

/// Enclosed volume; negative when the facets point inward. Only a closed mesh encloses one.
std::optional<double> enclosedVolume(const Mesh& mesh);

/// Edges that are not shared by exactly two triangles in opposite directions. A triangle with two
/// equal corners has an edge that no neighbour can share.
std::size_t openEdges(const Mesh& mesh);

inline bool isClosed(const Mesh& mesh) {
    return openEdges(mesh) == 0;
}

/// A place where the part is thin: straight from one side to the other.
struct Wall {
    double thickness = 0.0;
    Vector from;  ///< The centre of a facet.
    Vector to;    ///< On the other side.
};

/// An estimate of the thinnest wall: the shortest way from the centre of a facet, straight inward,
/// to the other side. Nothing when no way inward meets one; the first of equally thin ones.
std::optional<Wall> thinnestWall(const Mesh& mesh);

}  // namespace meshengine
