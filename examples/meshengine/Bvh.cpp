#include "Bvh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>
#include <utility>

namespace meshengine {
namespace {

constexpr std::uint32_t kLeafTriangles = 4;
// Halving 32-bit counts ends after 32 levels, and each level leaves one node waiting.
constexpr std::size_t kMaxDepth = 64;
// A ray through a shared edge must meet at least one of the two triangles.
constexpr double kEdgeTolerance = 1e-9;

/// Whether a point of the triangle's plane is about where the triangle is.
bool isNear(const Mesh& mesh, std::size_t triangle, const Vector& point, double slack) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto [low, high] =
            std::minmax({mesh.corner(triangle, 0)[axis], mesh.corner(triangle, 1)[axis],
                         mesh.corner(triangle, 2)[axis]});
        if (point[axis] < low - slack || point[axis] > high + slack) return false;
    }
    return true;
}

/// Where the ray leaves through the triangle: from its inner to its outer side.
std::optional<double> exitThrough(const Mesh& mesh, std::size_t triangle, const Ray& ray) {
    const Vector& origin = mesh.corner(triangle, 0);
    const Vector edge1 = mesh.corner(triangle, 1) - origin;
    const Vector edge2 = mesh.corner(triangle, 2) - origin;
    const Vector across = cross(ray.direction, edge2);
    const double determinant = dot(edge1, across);
    // Negative is a ray along the outward normal.
    if (determinant >= 0.0) return std::nullopt;
    const Vector offset = ray.origin - origin;
    const double u = dot(offset, across) / determinant;
    const Vector around = cross(offset, edge1);
    const double v = dot(ray.direction, around) / determinant;
    const bool inside = u >= -kEdgeTolerance && v >= -kEdgeTolerance && u + v <= 1 + kEdgeTolerance;
    if (!inside) return std::nullopt;
    const double distance = dot(edge2, around) / determinant;
    // Of a triangle much smaller than its distance, rounding leaves nothing of u and v.
    const double slack = kEdgeTolerance * (std::abs(distance) + length(edge1) + length(edge2));
    if (!isNear(mesh, triangle, ray.origin + ray.direction * distance, slack)) return std::nullopt;
    return distance;
}

}  // namespace

Bvh::Bvh(const Mesh& mesh) : mesh_(mesh), order_(mesh.triangles.size()) {
    std::iota(order_.begin(), order_.end(), 0U);
    nodes_.reserve(order_.size());
    if (!order_.empty()) build(0, static_cast<std::uint32_t>(order_.size()));
}

Bvh::Box Bvh::boxOf(std::uint32_t first, std::uint32_t count) const {
    constexpr double far = std::numeric_limits<double>::infinity();
    Box box{{far, far, far}, {-far, -far, -far}};
    for (std::uint32_t i = first; i < first + count; ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            const Vector& point = mesh_.corner(order_[i], k);
            box.low = {std::min(box.low.x, point.x), std::min(box.low.y, point.y),
                       std::min(box.low.z, point.z)};
            box.high = {std::max(box.high.x, point.x), std::max(box.high.y, point.y),
                        std::max(box.high.z, point.z)};
        }
    }
    return box;
}

std::uint32_t Bvh::build(std::uint32_t first, std::uint32_t count) {
    const auto index = static_cast<std::uint32_t>(nodes_.size());
    const Box box = boxOf(first, count);
    nodes_.push_back({box, first, count, 0});
    if (count <= kLeafTriangles) return index;

    const Vector size = box.high - box.low;
    const std::size_t axis = size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
    const auto begin = order_.begin() + first;
    const std::uint32_t half = count / 2;
    // The triangle's number settles equal centres, so that a mesh has one tree.
    std::nth_element(begin, begin + half, begin + count, [&](std::uint32_t a, std::uint32_t b) {
        return std::pair(mesh_.centre(a)[axis], a) < std::pair(mesh_.centre(b)[axis], b);
    });
    build(first, half);
    const std::uint32_t right = build(first + half, count - half);
    nodes_[index].right = right;
    return index;
}

bool Bvh::meets(const Box& box, const Ray& ray, double farthest) {
    double enter = 0.0;
    double leave = farthest;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double low = box.low[axis] - ray.origin[axis];
        const double high = box.high[axis] - ray.origin[axis];
        const double speed = ray.direction[axis];
        if (speed == 0.0) {
            if (low > 0.0 || high < 0.0) return false;
            continue;
        }
        enter = std::max(enter, std::min(low / speed, high / speed));
        leave = std::min(leave, std::max(low / speed, high / speed));
    }
    return enter <= leave * (1 + kEdgeTolerance);
}

double Bvh::exitDistance(const Ray& ray, std::size_t from, double nearest, double farthest) const {
    if (nodes_.empty()) return farthest;
    std::array<std::uint32_t, kMaxDepth> waiting{};
    std::size_t depth = 1;
    while (depth > 0) {
        const std::uint32_t index = waiting[--depth];
        const Node& node = nodes_[index];
        if (!meets(node.box, ray, farthest)) continue;
        if (node.right != 0) {
            waiting[depth++] = node.right;
            waiting[depth++] = index + 1;
            continue;
        }
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            if (order_[i] == from) continue;
            const std::optional<double> distance = exitThrough(mesh_, order_[i], ray);
            if (distance && *distance > nearest) farthest = std::min(farthest, *distance);
        }
    }
    return farthest;
}

}  // namespace meshengine
