#include "Loops.h"

#include <algorithm>
#include <map>

#include "../Vec.h"

namespace corvane::part::facets {
namespace {

constexpr std::uint32_t kNone = 0xffffffffU;

class Builder {
public:
    Builder(Model& model, const Mesh& mesh, const MeshTopology& topology,
            const std::vector<int>& edgeOf)
        : model_(model), mesh_(mesh), topology_(topology), edgeOf_(edgeOf) {}

    void build() {
        findSides();
        std::vector<bool> used(mesh_.triangles.size() * 3, false);
        for (std::uint32_t facet = 0; facet < mesh_.triangles.size(); ++facet)
            for (std::size_t side = 0; side < 3; ++side)
                if (isBorder(sidesOf_[facet][side]) && !used[numberOf(facet, side)])
                    addLoop(facet, side, used);
        for (Face& face : model_.faces)
            sortLoops(face);
    }

private:
    using Line = std::uint32_t;  // place of a border in the edges of the topology

    [[nodiscard]] bool isBorder(Line line) const { return edgeOf_[line] != 0; }
    [[nodiscard]] std::uint32_t otherEnd(Line line, std::uint32_t vertex) const {
        const reading::MeshEdge& edge = topology_.edges[line];
        return edge.a == vertex ? edge.b : edge.a;
    }

    void findSides() {
        sidesOf_.assign(mesh_.triangles.size(), {kNone, kNone, kNone});
        for (Line line = 0; line < topology_.edges.size(); ++line)
            for (const std::uint32_t facet : topology_.edges[line].facets)
                for (Line& side : sidesOf_[facet])
                    if (side == kNone) {
                        side = line;
                        break;
                    }
    }

    /// The line that follows around the face: the next border across the facets at the vertex.
    [[nodiscard]] std::pair<Line, std::uint32_t> following(Line line, std::uint32_t facet,
                                                           std::uint32_t vertex) const {
        for (std::size_t guard = 0; guard < mesh_.triangles.size(); ++guard) {
            for (const Line side : sidesOf_[facet]) {
                const reading::MeshEdge& edge = topology_.edges[side];
                if (side == line || (edge.a != vertex && edge.b != vertex)) continue;
                line = side;
                break;
            }
            const reading::MeshEdge& edge = topology_.edges[line];
            if (isBorder(line)) break;
            facet = edge.facets[edge.facets[0] == facet ? 1 : 0];
        }
        return {line, facet};
    }

    static std::size_t numberOf(std::uint32_t facet, std::size_t side) {
        return std::size_t{facet} * 3 + side;
    }

    void addLoop(std::uint32_t facet, std::size_t side, std::vector<bool>& used) {
        Loop loop;
        Line line = sidesOf_[facet][side];
        const reading::MeshEdge& first = topology_.edges[line];
        // Along the facet's own sense of rotation, to the end of its side.
        std::uint32_t vertex = isForward(mesh_.triangles[facet], first) ? first.b : first.a;
        const Vector origin = mesh_.vertices[vertex];
        const int face = mesh_.faces[facet];
        for (std::size_t place = side; !used[numberOf(facet, place)];) {
            used[numberOf(facet, place)] = true;
            if (loop.edges.empty() || loop.edges.back() != edgeOf_[line])
                loop.edges.push_back(edgeOf_[line]);
            std::tie(line, facet) = following(line, facet, vertex);
            const std::uint32_t to = otherEnd(line, vertex);
            loop.area =
                loop.area + cross(mesh_.vertices[vertex] - origin, mesh_.vertices[to] - origin);
            loop.length += distance(mesh_.vertices[vertex], mesh_.vertices[to]);
            vertex = to;
            place = static_cast<std::size_t>(
                std::find(sidesOf_[facet].begin(), sidesOf_[facet].end(), line) -
                sidesOf_[facet].begin());
            if (place > 2) break;
        }
        if (loop.edges.size() > 1 && loop.edges.front() == loop.edges.back()) loop.edges.pop_back();
        loops_[face].push_back(std::move(loop));
    }

    /// The outer border first: the one that goes around a flat face, else the longest.
    void sortLoops(Face& face) {
        std::vector<Loop>& loops = loops_[face.number];
        const bool flat = face.surface.kind == SurfaceKind::Plane;
        const auto size = [&](const Loop& loop) {
            return flat ? dot(loop.area, face.normal) : loop.length;
        };
        std::stable_sort(loops.begin(), loops.end(),
                         [&](const Loop& l, const Loop& r) { return size(l) > size(r); });
        for (Loop& loop : loops)
            face.loops.push_back(std::move(loop.edges));
    }

    struct Loop {
        std::vector<int> edges;
        Vector area;  // twice, square to the loop
        double length = 0.0;
    };

    Model& model_;
    const Mesh& mesh_;
    const MeshTopology& topology_;
    const std::vector<int>& edgeOf_;            // by line
    std::vector<std::array<Line, 3>> sidesOf_;  // by facet
    std::map<int, std::vector<Loop>> loops_;    // by face
};

}  // namespace

void addLoops(Model& model, const Mesh& mesh, const MeshTopology& topology,
              const std::vector<int>& edgeOf) {
    Builder(model, mesh, topology, edgeOf).build();
}

bool isForward(const std::array<std::uint32_t, 3>& facet, const reading::MeshEdge& edge) {
    return (facet[0] == edge.a && facet[1] == edge.b) ||
           (facet[1] == edge.a && facet[2] == edge.b) || (facet[2] == edge.a && facet[0] == edge.b);
}

}  // namespace corvane::part::facets
