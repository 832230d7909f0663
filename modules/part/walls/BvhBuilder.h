#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "Bvh.h"

namespace corvane::part::walls {

/// Builds the tree from the top, each cut where the boxes on both sides have the least surface for
/// what they hold.
class Bvh::Builder {
public:
    explicit Builder(std::vector<Facet>& facets);
    std::vector<Node> build();

private:
    struct Bounds {
        std::array<float, 3> low{1e30F, 1e30F, 1e30F}, high{-1e30F, -1e30F, -1e30F};
        void add(const Bounds& other);
        [[nodiscard]] float surface() const;
    };
    struct Item {
        Bounds bounds;
        std::array<float, 3> centre;
        std::uint32_t facet;
    };
    struct Range {
        std::uint32_t begin, end;
        Bounds bounds, normals;
        [[nodiscard]] std::uint32_t size() const { return end - begin; }
    };
    static constexpr std::size_t kBins = 16;
    /// Where to cut: before that bin of an axis, if it is not 0.
    struct Place {
        std::size_t axis = 0, bin = 0;
        float low = 0.0F, scale = 0.0F, cost = 1e30F;
        [[nodiscard]] std::size_t binOf(const Item& item) const {
            return std::min(kBins - 1, static_cast<std::size_t>((item.centre[axis] - low) * scale));
        }
    };
    struct Task {
        Range range;
        std::uint32_t node;
        int depth;
    };

    [[nodiscard]] Range range(std::uint32_t begin, std::uint32_t end) const;
    [[nodiscard]] Place bestAlong(std::size_t axis, const Range& range,
                                  const Bounds& centres) const;
    std::uint32_t cut(const Range& range, int depth);
    std::uint32_t cutAtMiddle(const Range& range, std::size_t axis);
    std::size_t split(const Range& whole, int depth, std::array<Range, kWidth>& parts);

    std::vector<Facet>& facets_;
    std::vector<Item> items_;
};

}  // namespace corvane::part::walls
