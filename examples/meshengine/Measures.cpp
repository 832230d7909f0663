#include "Measures.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <vector>

namespace meshengine {
namespace {

struct Edge {
    std::uint32_t low;
    std::uint32_t high;
    bool forward;  ///< the triangle walks it from low to high

    bool sameLine(const Edge& other) const { return low == other.low && high == other.high; }
};

std::vector<Edge> sortedEdges(const Mesh& mesh) {
    std::vector<Edge> edges;
    edges.reserve(mesh.triangles.size() * 3);
    for (const Triangle& triangle : mesh.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t from = triangle[i];
            const std::uint32_t to = triangle[(i + 1) % 3];
            edges.push_back({std::min(from, to), std::max(from, to), from < to});
        }
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) {
        return std::tie(a.low, a.high) < std::tie(b.low, b.high);
    });
    return edges;
}

}  // namespace

Vector boundingSize(const Mesh& mesh) {
    Vector low = mesh.vertices.front();
    Vector high = low;
    for (const Vector& vertex : mesh.vertices) {
        low = {std::min(low.x, vertex.x), std::min(low.y, vertex.y), std::min(low.z, vertex.z)};
        high = {std::max(high.x, vertex.x), std::max(high.y, vertex.y), std::max(high.z, vertex.z)};
    }
    return high - low;
}

double surfaceArea(const Mesh& mesh) {
    double doubled = 0.0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
        doubled += length(mesh.normal(i));
    return doubled / 2.0;
}

std::optional<double> enclosedVolume(const Mesh& mesh) {
    if (!isClosed(mesh)) return std::nullopt;
    // Measured from a vertex of the part: from a far origin the terms would cancel each other out.
    const Vector origin = mesh.vertices.front();
    double sixfold = 0.0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
        sixfold += dot(mesh.corner(i, 0) - origin, mesh.normal(i));
    return sixfold / 6.0;
}

std::size_t openEdges(const Mesh& mesh) {
    const std::vector<Edge> edges = sortedEdges(mesh);
    std::size_t open = 0;
    for (std::size_t i = 0; i < edges.size();) {
        std::size_t end = i;
        while (end < edges.size() && edges[end].sameLine(edges[i]))
            ++end;
        const bool paired = end - i == 2 && edges[i].forward != edges[i + 1].forward;
        if (!paired) ++open;
        i = end;
    }
    return open;
}

}  // namespace meshengine
