#include "Borders.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "../Elementary.h"
#include "../Vec.h"
#include "EdgeCurves.h"
#include "Loops.h"
#include "Regions.h"

namespace corvane::part::facets {
namespace {

constexpr double kSmoothEdge = 4.0;  // degrees at most between surfaces that are tangent
constexpr std::uint32_t kNone = 0xffffffffU;

class Builder {
public:
    Builder(Model& model, const Mesh& mesh, const MeshTopology& topology, double tolerance)
        : model_(model), mesh_(mesh), topology_(topology), tolerance_(tolerance) {}

    void build() {
        findLines();
        for (const auto& [faces, lines] : between_)
            for (const std::uint32_t line : lines)
                if (edgeOf_[line] == 0) addEdge(faces, line);
        addLoops(model_, mesh_, topology_, edgeOf_);
    }

private:
    using Line = std::uint32_t;  // place of a border in the edges of the topology

    /// The faces on both sides of a line, the smaller number first; zero first at an open border.
    [[nodiscard]] std::pair<int, int> facesOf(const reading::MeshEdge& edge) const {
        const int left = mesh_.faces[edge.facets[0]];
        if (edge.facets.size() != 2) return {0, left};
        return std::minmax(left, int{mesh_.faces[edge.facets[1]]});
    }

    void findLines() {
        edgeOf_.assign(topology_.edges.size(), 0);
        isBorder_.assign(topology_.edges.size(), false);
        firstAt_.assign(mesh_.vertices.size() + 1, 0);
        for (Line line = 0; line < topology_.edges.size(); ++line) {
            const auto faces = facesOf(topology_.edges[line]);
            if (faces.first == faces.second) continue;
            isBorder_[line] = true;
            between_[faces].push_back(line);
            ++firstAt_[topology_.edges[line].a];
            ++firstAt_[topology_.edges[line].b];
        }
        std::uint32_t sum = 0;
        for (std::uint32_t& first : firstAt_)
            first = sum += first;
        linesAt_.resize(sum);
        for (Line line = 0; line < topology_.edges.size(); ++line)
            if (isBorder_[line])
                for (const std::uint32_t vertex :
                     {topology_.edges[line].a, topology_.edges[line].b})
                    linesAt_[--firstAt_[vertex]] = line;
    }

    [[nodiscard]] std::uint32_t otherEnd(Line line, std::uint32_t vertex) const {
        const reading::MeshEdge& edge = topology_.edges[line];
        return edge.a == vertex ? edge.b : edge.a;
    }
    /// The line that goes on between the same faces after this one; kNone in a corner.
    [[nodiscard]] Line next(Line line, std::uint32_t vertex) const {
        const std::uint32_t first = firstAt_[vertex];
        if (firstAt_[vertex + 1] - first != 2) return kNone;
        const Line other = linesAt_[linesAt_[first] == line ? first + 1 : first];
        const bool same = facesOf(topology_.edges[other]) == facesOf(topology_.edges[line]);
        return same && edgeOf_[other] == 0 ? other : kNone;
    }

    void addEdge(const std::pair<int, int>& faces, Line first) {
        Edge edge;
        edge.number = static_cast<int>(model_.edges.size()) + 1;
        // An open border has its face first.
        edge.faces = {faces.first, faces.second};
        if (faces.first == 0) std::swap(edge.faces[0], edge.faces[1]);
        edgeOf_[first] = edge.number;
        std::vector<std::uint32_t> chain{topology_.edges[first].a, topology_.edges[first].b};
        for (int side = 0; side < 2 && chain.front() != chain.back(); ++side) {
            std::reverse(chain.begin(), chain.end());
            Line last = first;
            for (Line line = next(last, chain.back()); line != kNone;
                 line = next(last, chain.back())) {
                edgeOf_[line] = edge.number;
                chain.push_back(otherEnd(line, chain.back()));
                last = line;
            }
        }
        edge.vertices = {static_cast<int>(chain.front()) + 1, static_cast<int>(chain.back()) + 1};
        for (const std::uint32_t vertex : chain)
            edge.points.push_back(mesh_.vertices[vertex]);
        setCurve(model_, tolerance_, edge);
        setConvexity(edge, topology_.edges[first]);
        model_.edges.push_back(std::move(edge));
    }

    [[nodiscard]] Vector normalOf(const Face& face, const Vector& point) const {
        const Offset offset = offsetFrom(face.surface, point);
        return face.concave ? -offset.outward : offset.outward;
    }

    void setConvexity(Edge& edge, const reading::MeshEdge& line) const {
        if (line.facets.size() != 2) return;
        Vector n0 = topology_.normals[line.facets[0]], n1 = topology_.normals[line.facets[1]];
        const Face &f0 = model_.face(mesh_.faces[line.facets[0]]),
                   &f1 = model_.face(mesh_.faces[line.facets[1]]);
        // Between surfaces that are known the true angle, else that of the facets, whose steps a
        // curved face has even where it is tangent.
        const bool known =
            f0.surface.kind != SurfaceKind::Other && f1.surface.kind != SurfaceKind::Other;
        const Vector &a = mesh_.vertices[line.a], &b = mesh_.vertices[line.b];
        if (known) {
            n0 = normalOf(f0, (a + b) * 0.5);
            n1 = normalOf(f1, (a + b) * 0.5);
        }
        edge.angle = angleBetween(n0, n1);
        const bool forward = isForward(mesh_.triangles[line.facets[0]], line);
        const double turn = dot(cross(n0, n1), forward ? b - a : a - b);
        edge.convexity = edge.angle <= (known ? kSmoothEdge : kSmoothAngle / 2) ? Convexity::Smooth
                         : turn > 0.0                                           ? Convexity::Convex
                                      : Convexity::Concave;
    }

    Model& model_;
    const Mesh& mesh_;
    const MeshTopology& topology_;
    double tolerance_;
    std::map<std::pair<int, int>, std::vector<Line>> between_;
    std::vector<int> edgeOf_;  // by line; 0 for none yet
    std::vector<bool> isBorder_;
    std::vector<std::uint32_t> firstAt_;  // by vertex, in linesAt_
    std::vector<Line> linesAt_;
};

}  // namespace

void addBorders(Model& model, const Mesh& mesh, const MeshTopology& topology, double tolerance) {
    Builder(model, mesh, topology, tolerance).build();
}

}  // namespace corvane::part::facets
