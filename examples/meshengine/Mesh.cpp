#include "Mesh.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace meshengine {
namespace {

bool before(const Vector& a, const Vector& b) {
    return std::tie(a.x, a.y, a.z) < std::tie(b.x, b.y, b.z);
}

}  // namespace

double length(const Vector& vector) {
    return std::sqrt(dot(vector, vector));
}

Vector Mesh::centre(std::size_t triangle) const {
    return (corner(triangle, 0) + corner(triangle, 1) + corner(triangle, 2)) * (1.0 / 3.0);
}

Vector Mesh::normal(std::size_t triangle) const {
    const Vector& origin = corner(triangle, 0);
    return cross(corner(triangle, 1) - origin, corner(triangle, 2) - origin);
}

Mesh weld(std::span<const Vector> corners) {
    // Sorting bounds the work for any input, which a hash of coordinates would not.
    std::vector<std::uint32_t> order(corners.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return before(corners[a], corners[b]); });

    Mesh mesh;
    mesh.triangles.resize(corners.size() / 3);
    for (const std::uint32_t corner : order) {
        if (mesh.vertices.empty() || !(mesh.vertices.back() == corners[corner]))
            mesh.vertices.push_back(corners[corner]);
        mesh.triangles[corner / 3][corner % 3] =
            static_cast<std::uint32_t>(mesh.vertices.size() - 1);
    }
    return mesh;
}

}  // namespace meshengine
