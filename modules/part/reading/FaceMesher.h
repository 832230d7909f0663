#pragma once

#include <TopoDS_Shape.hxx>

namespace corvane::part::reading {

/// A face of more borders is best meshed alone.
constexpr int kManyBorders = 50;

/// Puts facets on all faces of the shape, which keep within a length and an angle (radians) of
/// them. The kernel divides the edges and meshes double curved faces; it takes times that grow
/// with the square of the borders of a face, so the facets of others are made here. Throws
/// std::runtime_error where an edge bends too often.
void meshFaces(const TopoDS_Shape& shape, double deviation, double angle);

}  // namespace corvane::part::reading
