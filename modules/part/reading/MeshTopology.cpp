#include "MeshTopology.h"

#include <algorithm>
#include <numeric>

#include "../Vec.h"

namespace corvane::part::reading {

MeshTopology::MeshTopology(const Mesh& mesh) {
    struct Side {
        std::uint32_t a, b, facet;
    };
    std::vector<Side> sides;
    sides.reserve(mesh.triangles.size() * 3);
    for (std::uint32_t facet = 0; facet < mesh.triangles.size(); ++facet) {
        const auto& t = mesh.triangles[facet];
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t p = t[i], q = t[(i + 1) % 3];
            sides.push_back({std::min(p, q), std::max(p, q), facet});
        }
        const Vector twice = cross(mesh.vertices[t[1]] - mesh.vertices[t[0]],
                                   mesh.vertices[t[2]] - mesh.vertices[t[0]]);
        areas.push_back(length(twice) / 2);
        normals.push_back(unit(twice));
    }
    std::sort(sides.begin(), sides.end(), [](const Side& l, const Side& r) {
        return l.a != r.a ? l.a < r.a : l.b != r.b ? l.b < r.b : l.facet < r.facet;
    });
    for (const Side& side : sides) {
        if (edges.empty() || edges.back().a != side.a || edges.back().b != side.b)
            edges.push_back({side.a, side.b, {}});
        edges.back().facets.push_back(side.facet);
    }
}

Groups::Groups(std::size_t size) : parent_(size) {
    std::iota(parent_.begin(), parent_.end(), 0U);
}

std::uint32_t Groups::find(std::uint32_t item) {
    while (parent_[item] != item) {
        parent_[item] = parent_[parent_[item]];
        item = parent_[item];
    }
    return item;
}

void Groups::join(std::uint32_t a, std::uint32_t b) {
    a = find(a);
    b = find(b);
    // The least member leads, so that groups come out in the order of the file.
    parent_[std::max(a, b)] = std::min(a, b);
}

std::size_t Groups::number(std::vector<std::uint32_t>& groupOf) {
    std::size_t count = 0;
    groupOf.assign(parent_.size(), 0);
    for (std::uint32_t item = 0; item < parent_.size(); ++item) {
        const std::uint32_t root = find(item);
        groupOf[item] = root == item ? static_cast<std::uint32_t>(count++) : groupOf[root];
    }
    return count;
}

}  // namespace corvane::part::reading
