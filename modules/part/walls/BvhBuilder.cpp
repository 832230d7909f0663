#include "BvhBuilder.h"

#include <algorithm>
#include <cmath>

namespace corvane::part::walls {
namespace {

constexpr std::uint32_t kLeaf = 4;
constexpr float kMargin = 5e-7F;
/// Below this depth cuts halve the count, so that the stack of a visit has a known size.
constexpr int kDeep = 24;

}  // namespace

void Bvh::Builder::Bounds::add(const Bounds& other) {
    for (std::size_t i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], other.low[i]);
        high[i] = std::max(high[i], other.high[i]);
    }
}

float Bvh::Builder::Bounds::surface() const {
    if (low[0] > high[0]) return 0.0F;
    const float x = high[0] - low[0], y = high[1] - low[1], z = high[2] - low[2];
    return x * y + y * z + z * x;
}

Bvh::Builder::Builder(std::vector<Facet>& facets) : facets_(facets) {
    items_.resize(facets.size());
    float size = 0.0F;
    for (const Facet& facet : facets)
        for (const float x : facet.a)
            size = std::max(size, std::abs(x));
    // Rays and boxes are rounded; a box must be wide enough for both.
    const float margin = size * kMargin;
    for (std::uint32_t f = 0; f < facets.size(); ++f) {
        Item& item = items_[f];
        item.facet = f;
        for (std::size_t i = 0; i < 3; ++i) {
            const float a = facets[f].a[i], b = a + facets[f].ab[i], c = a + facets[f].ac[i];
            item.bounds.low[i] = std::min({a, b, c}) - margin;
            item.bounds.high[i] = std::max({a, b, c}) + margin;
            item.centre[i] = (item.bounds.low[i] + item.bounds.high[i]) * 0.5F;
        }
    }
}

Bvh::Builder::Range Bvh::Builder::range(std::uint32_t begin, std::uint32_t end) const {
    Range range{begin, end, {}, {}};
    for (std::uint32_t i = begin; i < end; ++i) {
        range.bounds.add(items_[i].bounds);
        const float* n = facets_[items_[i].facet].normal;
        range.normals.add({{n[0], n[1], n[2]}, {n[0], n[1], n[2]}});
    }
    return range;
}

std::uint32_t Bvh::Builder::cutAtMiddle(const Range& range, std::size_t axis) {
    const std::uint32_t middle = range.begin + range.size() / 2;
    std::nth_element(
        items_.begin() + range.begin, items_.begin() + middle, items_.begin() + range.end,
        [axis](const Item& l, const Item& r) { return l.centre[axis] < r.centre[axis]; });
    return middle;
}

/// The place along an axis where the boxes on both sides have the least surface.
Bvh::Builder::Place Bvh::Builder::bestAlong(std::size_t axis, const Range& range,
                                            const Bounds& centres) const {
    Place place;
    place.axis = axis;
    place.low = centres.low[axis];
    const float width = centres.high[axis] - place.low;
    if (!(width > 0.0F)) return place;
    place.scale = static_cast<float>(kBins) / width;
    std::array<Bounds, kBins> bins;
    std::array<std::uint32_t, kBins> counts{};
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const std::size_t bin = place.binOf(items_[i]);
        bins[bin].add(items_[i].bounds);
        ++counts[bin];
    }
    std::array<float, kBins> above{};
    Bounds bounds;
    std::uint32_t count = 0;
    for (std::size_t i = kBins - 1; i > 0; --i) {
        bounds.add(bins[i]);
        count += counts[i];
        above[i] = bounds.surface() * static_cast<float>(count);
    }
    bounds = {};
    count = 0;
    for (std::size_t i = 1; i < kBins; ++i) {
        bounds.add(bins[i - 1]);
        count += counts[i - 1];
        const float cost = bounds.surface() * static_cast<float>(count) + above[i];
        if (count > 0 && count < range.size() && cost < place.cost) {
            place.cost = cost;
            place.bin = i;
        }
    }
    return place;
}

/// Sorts the items of the range to two sides of a plane; gives the first of the second side.
std::uint32_t Bvh::Builder::cut(const Range& range, int depth) {
    Bounds centres;
    for (std::uint32_t i = range.begin; i < range.end; ++i)
        centres.add({items_[i].centre, items_[i].centre});
    std::size_t longest = 0;
    for (std::size_t i = 1; i < 3; ++i)
        if (centres.high[i] - centres.low[i] > centres.high[longest] - centres.low[longest])
            longest = i;
    if (depth > kDeep) return cutAtMiddle(range, longest);
    Place best;
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (const Place place = bestAlong(axis, range, centres); place.cost < best.cost)
            best = place;
    if (best.bin == 0) return cutAtMiddle(range, longest);
    const auto middle =
        std::partition(items_.begin() + range.begin, items_.begin() + range.end,
                       [&](const Item& item) { return best.binOf(item) < best.bin; });
    return static_cast<std::uint32_t>(middle - items_.begin());
}

/// Cuts the largest part until there are as many as a node has places.
std::size_t Bvh::Builder::split(const Range& whole, int depth, std::array<Range, kWidth>& parts) {
    parts[0] = whole;
    std::size_t count = 1;
    while (count < kWidth) {
        std::size_t largest = count;
        float most = -1.0F;
        for (std::size_t i = 0; i < count; ++i)
            if (parts[i].size() > kLeaf && parts[i].bounds.surface() > most) {
                most = parts[i].bounds.surface();
                largest = i;
            }
        if (largest == count) break;
        const Range part = parts[largest];
        const std::uint32_t middle = cut(part, depth);
        parts[largest] = range(part.begin, middle);
        parts[count++] = range(middle, part.end);
    }
    return count;
}

std::vector<Bvh::Node> Bvh::Builder::build() {
    std::vector<Node> nodes;
    if (items_.empty()) return nodes;
    std::vector<Task> tasks{{range(0, static_cast<std::uint32_t>(items_.size())), 0, 0}};
    nodes.emplace_back();
    while (!tasks.empty()) {
        const Task task = tasks.back();
        tasks.pop_back();
        std::array<Range, kWidth> parts{};
        const std::size_t count = split(task.range, task.depth, parts);
        Node node{};
        node.children = static_cast<std::uint8_t>(count);
        for (std::size_t k = 0; k < count; ++k) {
            for (std::size_t i = 0; i < 3; ++i) {
                node.low[i][k] = parts[k].bounds.low[i];
                node.high[i][k] = parts[k].bounds.high[i];
                node.least[i][k] = parts[k].normals.low[i];
                node.greatest[i][k] = parts[k].normals.high[i];
            }
            const bool leaf = parts[k].size() <= kLeaf;
            node.count[k] = static_cast<std::uint8_t>(leaf ? parts[k].size() : 0);
            node.child[k] = leaf ? parts[k].begin : static_cast<std::uint32_t>(nodes.size());
            if (leaf) continue;
            tasks.push_back({parts[k], node.child[k], task.depth + 1});
            nodes.emplace_back();
        }
        nodes[task.node] = node;
    }
    std::vector<Facet> sorted;
    sorted.reserve(facets_.size());
    for (const Item& item : items_)
        sorted.push_back(facets_[item.facet]);
    facets_ = std::move(sorted);
    return nodes;
}

}  // namespace corvane::part::walls
