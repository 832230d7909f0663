#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace corvane::part::reading {

/// A point of the plane.
struct Flat {
    double x = 0.0, y = 0.0;
};

/// Corners by number, anticlockwise.
using Corners = std::array<std::uint32_t, 3>;

/// The constrained Delaunay triangles inside closed rings of points, in time near linear in the
/// points. What an odd number of borders surrounds is inside. Points that differ by less than a
/// hundred millionth of the whole are one. Nothing where rings cross or do not close.
std::optional<std::vector<Corners>> triangulate(
    const std::vector<Flat>& points, const std::vector<std::array<std::uint32_t, 2>>& borders);

}  // namespace corvane::part::reading
