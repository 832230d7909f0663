#include "Delaunay.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "DelaunayMesh.h"

namespace corvane::part::reading {
namespace {

/// The points on the grid, each place once, in an order in which each is near the one before.
class Grid {
public:
    explicit Grid(const std::vector<Flat>& points) : nodes_(points.size()) {
        Flat low{1e300, 1e300}, high{-1e300, -1e300};
        for (const Flat& p : points) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
        const double size = std::max(high.x - low.x, high.y - low.y);
        isUsable_ = size > 0.0 && size < 1e30;
        if (!isUsable_) return;
        const double scale = DelaunayMesh::kGrid / size;
        std::vector<GridPoint> all(points.size());
        for (std::size_t i = 0; i < points.size(); ++i)
            all[i] = {std::llround((points[i].x - low.x) * scale),
                      std::llround((points[i].y - low.y) * scale)};
        order(all);
    }

    [[nodiscard]] bool isUsable() const { return isUsable_; }
    [[nodiscard]] const std::vector<GridPoint>& places() const { return places_; }
    /// The place of a point.
    [[nodiscard]] std::uint32_t node(std::uint32_t point) const { return nodes_[point]; }
    /// A point at a place.
    [[nodiscard]] std::uint32_t pointAt(std::uint32_t node) const { return points_[node]; }

private:
    /// Row by row, there and back.
    void order(const std::vector<GridPoint>& all) {
        const auto rows =
            static_cast<std::int64_t>(std::sqrt(static_cast<double>(all.size())) / 2.0 + 1.0);
        const std::int64_t height = DelaunayMesh::kGrid / rows + 1;
        std::vector<std::uint32_t> sorted(all.size());
        std::iota(sorted.begin(), sorted.end(), 0U);
        const auto key = [&](std::uint32_t i) {
            const std::int64_t row = all[i].y / height;
            return std::array{row, row % 2 == 0 ? all[i].x : -all[i].x, all[i].y};
        };
        std::sort(sorted.begin(), sorted.end(), [&](std::uint32_t l, std::uint32_t r) {
            const auto a = key(l), b = key(r);
            return a != b ? a < b : l < r;
        });
        for (const std::uint32_t i : sorted) {
            const GridPoint& p = all[i];
            if (places_.empty() || places_.back().x != p.x || places_.back().y != p.y) {
                places_.push_back(p);
                points_.push_back(i);
            }
            nodes_[i] = static_cast<std::uint32_t>(places_.size() - 1);
        }
    }

    bool isUsable_ = false;
    std::vector<GridPoint> places_;
    std::vector<std::uint32_t> nodes_, points_;
};

/// Whether as many borders come to each place as leave it.
bool areRings(const std::vector<std::array<std::uint32_t, 2>>& borders, const Grid& grid) {
    std::vector<int> open(grid.places().size(), 0);
    for (const auto& [from, to] : borders) {
        ++open[grid.node(from)];
        --open[grid.node(to)];
    }
    return std::all_of(open.begin(), open.end(), [](int count) { return count == 0; });
}

}  // namespace

std::optional<std::vector<Corners>> triangulate(
    const std::vector<Flat>& points, const std::vector<std::array<std::uint32_t, 2>>& borders) {
    const Grid grid(points);
    if (!grid.isUsable() || !areRings(borders, grid)) return std::nullopt;
    DelaunayMesh mesh(grid.places());
    for (const auto& [from, to] : borders)
        if (!mesh.addBorder(grid.node(from), grid.node(to))) return std::nullopt;
    std::vector<Corners> inside = mesh.inside();
    for (Corners& corners : inside)
        for (std::uint32_t& corner : corners)
            corner = grid.pointAt(corner);
    return inside;
}

}  // namespace corvane::part::reading
