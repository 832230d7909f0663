#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

/// One line between two vertices of a mesh with the facets that use it.
struct MeshEdge {
    std::uint32_t a = 0, b = 0;         // vertices, a < b
    std::vector<std::uint32_t> facets;  // more than two where the surface is no manifold
};

/// Facets with their neighbours and the groups that they form.
struct MeshTopology {
    explicit MeshTopology(const Mesh& mesh);

    std::vector<MeshEdge> edges;
    std::vector<Vector> normals;  // unit, zero for a facet without area
    std::vector<double> areas;
};

/// Groups of numbers 0 to n - 1 that were joined.
class Groups {
public:
    explicit Groups(std::size_t size);
    std::uint32_t find(std::uint32_t item);
    void join(std::uint32_t a, std::uint32_t b);
    /// For each item the number of its group from 0, in the order of first members; and how many
    /// there are.
    std::size_t number(std::vector<std::uint32_t>& groupOf);

private:
    std::vector<std::uint32_t> parent_;
};

}  // namespace corvane::part::reading
