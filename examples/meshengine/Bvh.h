#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "Mesh.h"

namespace meshengine {

struct Ray {
    Vector origin;
    Vector direction;  ///< of length 1
};

/// A balanced tree of boxes over the triangles of a mesh, so that a ray meets few of them. The
/// mesh must outlive the tree.
class Bvh {
public:
    explicit Bvh(const Mesh& mesh);

    /// The distance at which the ray first leaves the part through a triangle other than `from`,
    /// between `nearest` and `farthest`; `farthest` when it leaves through none.
    double exitDistance(const Ray& ray, std::size_t from, double nearest, double farthest) const;

private:
    struct Box {
        Vector low;
        Vector high;
    };
    struct Node {
        Box box;
        std::uint32_t first;  ///< of its triangles in order_
        std::uint32_t count;
        std::uint32_t right;  ///< the right child; the left one follows the node. 0 in a leaf
    };

    std::uint32_t build(std::uint32_t first, std::uint32_t count);
    Box boxOf(std::uint32_t first, std::uint32_t count) const;
    static bool meets(const Box& box, const Ray& ray, double farthest);

    const Mesh& mesh_;
    std::vector<std::uint32_t> order_;
    std::vector<Node> nodes_;
};

}  // namespace meshengine
