#include "Sides.h"

#include <cmath>
#include <tuple>

namespace corvane::part::walls {
namespace {

/// Vertices nearer than this part of the part's size are one.
constexpr double kSamePlace = 1e-5;

/// A vertex with the cell of space that it is in. Cells are centred at round numbers.
struct Placed {
    double x, y, z;
    std::uint32_t vertex;
    [[nodiscard]] auto cell() const { return std::tie(x, y, z); }
};

}  // namespace

Sides::Sides(const Mesh& mesh, const std::vector<std::uint32_t>& triangles, double size) {
    const double cell = std::max(size * kSamePlace, 1e-300);
    std::vector<bool> used(mesh.vertices.size(), false);
    std::vector<Placed> placed;
    for (const std::uint32_t t : triangles)
        for (const std::uint32_t v : mesh.triangles[t]) {
            if (used[v]) continue;
            used[v] = true;
            const Vector& p = mesh.vertices[v];
            placed.push_back(
                {std::round(p.x / cell), std::round(p.y / cell), std::round(p.z / cell), v});
        }
    std::sort(placed.begin(), placed.end(), [](const Placed& l, const Placed& r) {
        return l.cell() != r.cell() ? l.cell() < r.cell() : l.vertex < r.vertex;
    });
    std::vector<std::uint32_t> at(mesh.vertices.size(), 0);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const bool same = i > 0 && placed[i].cell() == placed[i - 1].cell();
        at[placed[i].vertex] = same ? at[placed[i - 1].vertex] : placed[i].vertex;
    }
    sides_.reserve(triangles.size() * 3);
    for (const std::uint32_t t : triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto [a, b] =
                std::minmax(at[mesh.triangles[t][i]], at[mesh.triangles[t][(i + 1) % 3]]);
            if (a != b) sides_.push_back({a, b, t});
        }
    std::sort(sides_.begin(), sides_.end(), [](const Side& l, const Side& r) {
        return std::tie(l.a, l.b, l.triangle) < std::tie(r.a, r.b, r.triangle);
    });
}

}  // namespace corvane::part::walls
