#pragma once

#include <cstdint>
#include <numeric>
#include <vector>

#include "../Vec.h"

namespace corvane::part::features {

/// Finds the boxes that matter to a question without a look at all of them.
class BoxTree {
public:
    explicit BoxTree(std::vector<Box> boxes) : boxes_(std::move(boxes)), order_(boxes_.size()) {
        std::iota(order_.begin(), order_.end(), 0U);
        if (!order_.empty()) build(0, order_.size());
    }

    /// Calls `visit` with the number of each box that may hold something better than `best`, which
    /// the visits lower. `bound` gives for a box, by its middle and half its sizes, the least value
    /// that anything in it can have.
    template <typename Bound, typename Visit>
    void search(const double& best, Bound bound, Visit visit) const {
        if (!nodes_.empty()) search(0, best, bound, visit);
    }

private:
    static constexpr std::size_t kLeaf = 4;
    struct Node {
        Vector centre, half;
        std::size_t first = 0, last = 0;
        std::size_t right = 0;  // the left child comes next; 0 for a leaf
    };

    template <typename Bound, typename Visit>
    void search(std::size_t index, const double& best, Bound& bound, Visit& visit) const {
        const Node& node = nodes_[index];
        if (!(bound(node.centre, node.half) < best)) return;
        if (node.right == 0) {
            for (std::size_t i = node.first; i < node.last; ++i)
                visit(order_[i]);
            return;
        }
        const Node &l = nodes_[index + 1], &r = nodes_[node.right];
        const bool leftFirst = bound(l.centre, l.half) <= bound(r.centre, r.half);
        search(leftFirst ? index + 1 : node.right, best, bound, visit);
        search(leftFirst ? node.right : index + 1, best, bound, visit);
    }

    void build(std::size_t first, std::size_t last) {
        Box box, middles;
        for (std::size_t i = first; i < last; ++i) {
            const Box& b = boxes_[order_[i]];
            add(box, b.least);
            add(box, b.greatest);
            add(middles, (b.least + b.greatest) * 0.5);
        }
        const std::size_t index = nodes_.size();
        nodes_.push_back(
            {(box.least + box.greatest) * 0.5, (box.greatest - box.least) * 0.5, first, last, 0});
        if (last - first <= kLeaf) return;
        const Vector size = middles.greatest - middles.least;
        const auto key = [&](std::uint32_t i) {
            const Vector m = boxes_[i].least + boxes_[i].greatest;
            return size.x >= size.y && size.x >= size.z ? m.x : size.y >= size.z ? m.y : m.z;
        };
        const std::size_t half = (first + last) / 2;
        const auto at = [&](std::size_t i) {
            return order_.begin() + static_cast<std::ptrdiff_t>(i);
        };
        std::nth_element(at(first), at(half), at(last), [&](std::uint32_t a, std::uint32_t b) {
            return key(a) != key(b) ? key(a) < key(b) : a < b;
        });
        build(first, half);
        nodes_[index].right = nodes_.size();
        build(half, last);
    }

    std::vector<Box> boxes_;
    std::vector<std::uint32_t> order_;
    std::vector<Node> nodes_;
};

}  // namespace corvane::part::features
