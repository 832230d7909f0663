#include "Borders.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "../Elementary.h"
#include "../Vec.h"
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
        addLoops();
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
        for (std::size_t k = 1; k < edge.points.size(); ++k)
            edge.length += distance(edge.points[k - 1], edge.points[k]);
        setCurve(edge);
        setConvexity(edge, topology_.edges[first]);
        model_.edges.push_back(std::move(edge));
    }

    void setCurve(Edge& edge) const {
        const Vector along = unit(edge.points.back() - edge.points.front());
        const bool straight =
            std::all_of(edge.points.begin(), edge.points.end(), [&](const Vector& p) {
                return distanceToLine(p, edge.points.front(), along) <= tolerance_;
            });
        if (straight && length(along) > 0.5)
            edge.kind = CurveKind::Line;
        else if (edge.points.size() > 3)
            setCircle(edge);
    }

    /// The circle through three of the points, if the others are on it.
    void setCircle(Edge& edge) const {
        const std::size_t count = edge.points.size();
        const bool closed = edge.vertices[0] == edge.vertices[1];
        if (closed && count < 7) return;
        const std::size_t last = closed ? 2 * (count - 1) / 3 : count - 1;
        const Vector &p = edge.points[0], &q = edge.points[last / 2], &r = edge.points[last];
        const Vector a = q - p, b = r - p, normal = cross(a, b);
        const double square = dot(normal, normal);
        if (!(square > 0.0)) return;
        const Vector centre =
            p + (cross(normal, a) * dot(b, b) + cross(b, normal) * dot(a, a)) * (0.5 / square);
        const Vector axis = unit(normal);
        const double radius = distance(p, centre);
        const double slack = std::max(8.0 * tolerance_, 1e-4 * radius);
        for (const Vector& point : edge.points)
            if (!(std::abs(distance(point, centre) - radius) <= slack &&
                  std::abs(dot(point - centre, axis)) <= slack))
                return;
        edge.kind = CurveKind::Circle;
        edge.centre = centre;
        edge.radius = radius;
        edge.axis = axis;
        takeAxis(edge);
    }

    /// A circle around the axis of a face beside it has the axis of that face, which many more
    /// facets tell.
    void takeAxis(Edge& edge) const {
        for (const int number : edge.faces) {
            if (number == 0) continue;
            const Surface& s = model_.face(number).surface;
            if (s.kind != SurfaceKind::Cylinder && s.kind != SurfaceKind::Cone &&
                s.kind != SurfaceKind::Torus)
                continue;
            const Vector foot = ontoLine(edge.centre, s.origin, s.axis);
            const double slack = std::max(20.0 * tolerance_, 1e-3 * edge.radius);
            if (angleBetweenLines(s.axis, edge.axis) > 0.5 || distance(foot, edge.centre) > slack)
                continue;
            edge.axis = dot(s.axis, edge.axis) < 0.0 ? -s.axis : s.axis;
            edge.centre = foot;
            double radius = 0.0;
            for (const Vector& point : edge.points)
                radius += distanceToLine(point, s.origin, s.axis);
            edge.radius = radius / static_cast<double>(edge.points.size());
            return;
        }
    }

    [[nodiscard]] Vector normalOf(const Face& face, const Vector& point) const {
        const Offset offset = offsetFrom(face.surface, point);
        return face.concave ? -offset.outward : offset.outward;
    }

    void setConvexity(Edge& edge, const reading::MeshEdge& line) const {
        if (line.facets.size() != 2) return;
        const auto& t = mesh_.triangles[line.facets[0]];
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
        const bool forward = (t[0] == line.a && t[1] == line.b) ||
                             (t[1] == line.a && t[2] == line.b) ||
                             (t[2] == line.a && t[0] == line.b);
        edge.angle = angleBetween(n0, n1);
        const double turn = dot(cross(n0, n1), forward ? b - a : a - b);
        edge.convexity = edge.angle <= (known ? kSmoothEdge : kSmoothAngle / 2) ? Convexity::Smooth
                         : turn > 0.0                                           ? Convexity::Convex
                                      : Convexity::Concave;
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
            if (isBorder_[line]) break;
            facet = edge.facets[edge.facets[0] == facet ? 1 : 0];
        }
        return {line, facet};
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

    void addLoops() {
        findSides();
        std::vector<bool> used(mesh_.triangles.size() * 3, false);
        for (std::uint32_t facet = 0; facet < mesh_.triangles.size(); ++facet)
            for (std::size_t side = 0; side < 3; ++side)
                if (isBorder_[sidesOf_[facet][side]] && !used[numberOf(facet, side)])
                    addLoop(facet, side, used);
        for (Face& face : model_.faces)
            sortLoops(face);
    }

    static std::size_t numberOf(std::uint32_t facet, std::size_t side) {
        return std::size_t{facet} * 3 + side;
    }

    void addLoop(std::uint32_t facet, std::size_t side, std::vector<bool>& used) {
        const auto& t = mesh_.triangles[facet];
        Loop loop;
        Line line = sidesOf_[facet][side];
        const reading::MeshEdge& first = topology_.edges[line];
        // Along the facet's own sense of rotation, to the end of its side.
        const bool forward = (t[0] == first.a && t[1] == first.b) ||
                             (t[1] == first.a && t[2] == first.b) ||
                             (t[2] == first.a && t[0] == first.b);
        std::uint32_t vertex = forward ? first.b : first.a;
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
    double tolerance_;
    std::map<std::pair<int, int>, std::vector<Line>> between_;
    std::vector<int> edgeOf_;  // by line; 0 for none yet
    std::vector<bool> isBorder_;
    std::vector<std::uint32_t> firstAt_;  // by vertex, in linesAt_
    std::vector<Line> linesAt_;
    std::vector<std::array<Line, 3>> sidesOf_;  // by facet
    std::map<int, std::vector<Loop>> loops_;    // by face
};

}  // namespace

void addBorders(Model& model, const Mesh& mesh, const MeshTopology& topology, double tolerance) {
    Builder(model, mesh, topology, tolerance).build();
}

}  // namespace corvane::part::facets
