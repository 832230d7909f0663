#include "Weld.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace corvane::part::reading {
namespace {

using Point = std::array<float, 3>;
using Cell = std::array<std::int32_t, 3>;

constexpr double kSteps = 2.0;
/// Points within reach of each other are in one cell or in cells side by side. A larger cell would
/// hold more vertices, a smaller one would have more neighbours to look at.
constexpr double kCell = 4.0;

struct Hash {
    template <typename Three>
    std::size_t operator()(const Three& three) const {
        std::uint64_t hash = 0;
        for (const auto value : three)
            hash = (hash ^ std::bit_cast<std::uint32_t>(value)) * 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(hash ^ (hash >> 29U));
    }
};

bool isTriangle(const StlFacet& facet) {
    return facet[0] != facet[1] && facet[1] != facet[2] && facet[2] != facet[0];
}

class Welder {
public:
    explicit Welder(const std::vector<StlFacet>& facets) {
        Point largest{};
        for (const StlFacet& facet : facets)
            if (isTriangle(facet))
                for (const Point& corner : facet)
                    for (std::size_t i = 0; i < 3; ++i)
                        largest[i] = std::max(largest[i], std::abs(corner[i]));
        constexpr float infinity = std::numeric_limits<float>::infinity();
        for (std::size_t i = 0; i < 3; ++i) {
            const double size = largest[i];
            const double below = std::nextafter(largest[i], -infinity);
            reach_[i] = size > 0.0 ? kSteps * (size - below) : 0.0;
        }
    }

    std::uint32_t vertexOf(Point corner) {
        // Zero and minus zero are one point.
        for (float& value : corner)
            value += 0.0F;
        const auto [known, fresh] = known_.emplace(corner, 0U);
        if (fresh) known->second = near(corner);
        return known->second;
    }

    [[nodiscard]] const Point& vertex(std::uint32_t number) const { return vertices_[number]; }

private:
    [[nodiscard]] std::int32_t cellOf(double value, std::size_t axis) const {
        const double size = kCell * reach_[axis];
        return size > 0.0 ? static_cast<std::int32_t>(std::floor(value / size)) : 0;
    }

    /// The first vertex within reach, which is a new one if there is none.
    std::uint32_t near(const Point& corner) {
        Cell low{}, high{}, own{};
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = cellOf(corner[i] - reach_[i], i);
            high[i] = cellOf(corner[i] + reach_[i], i);
            own[i] = cellOf(corner[i], i);
        }
        auto found = static_cast<std::uint32_t>(vertices_.size());
        for (std::int32_t x = low[0]; x <= high[0]; ++x)
            for (std::int32_t y = low[1]; y <= high[1]; ++y)
                for (std::int32_t z = low[2]; z <= high[2]; ++z) {
                    const auto [first, last] = cells_.equal_range({x, y, z});
                    for (auto it = first; it != last; ++it)
                        if (it->second < found && isNear(vertices_[it->second], corner))
                            found = it->second;
                }
        if (found == vertices_.size()) {
            vertices_.push_back(corner);
            cells_.emplace(own, found);
        }
        return found;
    }

    [[nodiscard]] bool isNear(const Point& a, const Point& b) const {
        for (std::size_t i = 0; i < 3; ++i)
            if (std::abs(double{a[i]} - double{b[i]}) > reach_[i]) return false;
        return true;
    }

    std::array<double, 3> reach_{};
    std::vector<Point> vertices_;
    std::unordered_map<Point, std::uint32_t, Hash> known_;
    std::unordered_multimap<Cell, std::uint32_t, Hash> cells_;
};

}  // namespace

Mesh weld(const std::vector<StlFacet>& facets, double factor) {
    Welder welder(facets);
    Mesh mesh;
    // Vertices are numbered as facets that stay use them.
    constexpr std::uint32_t unused = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> numbers;
    for (const StlFacet& facet : facets) {
        if (!isTriangle(facet)) continue;
        std::array<std::uint32_t, 3> corners{};
        for (std::size_t i = 0; i < 3; ++i)
            corners[i] = welder.vertexOf(facet[i]);
        if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0])
            continue;
        for (std::uint32_t& corner : corners) {
            if (corner >= numbers.size()) numbers.resize(corner + std::size_t{1}, unused);
            std::uint32_t& number = numbers[corner];
            if (number == unused) {
                number = static_cast<std::uint32_t>(mesh.vertices.size());
                const Point& p = welder.vertex(corner);
                mesh.vertices.push_back({p[0] * factor, p[1] * factor, p[2] * factor});
            }
            corner = number;
        }
        mesh.triangles.push_back(corners);
    }
    return mesh;
}

}  // namespace corvane::part::reading
