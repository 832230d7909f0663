#include "MeshModel.h"

#include <map>
#include <numeric>

#include "../Vec.h"
#include "MeshTopology.h"
#include "Recognise.h"

namespace corvane::part::reading {
namespace {

constexpr double kFlat =
    0.05;  // degrees between facets of one plane, which a file's rounding makes
constexpr double kSmoothAngle = 35.0;  // degrees between facets of one curved face
constexpr double kSimilarWidth =
    2.5;  // facets of one curved face differ in width by this factor at most

/// A group of coplanar facets: one flat face, or one strip of a curved one.
struct Strip {
    Vector centre, normal;
    double area = 0.0;
};

class Builder {
public:
    explicit Builder(Mesh mesh) : mesh_(std::move(mesh)), topology_(mesh_) {}

    Result build();
    Mesh takeMesh() { return std::move(mesh_); }

private:
    void findStrips();
    void findRegions();
    void addSolids();
    void addFace(std::uint32_t region, const std::vector<std::uint32_t>& strips);
    void fit(Face& face, const std::vector<std::uint32_t>& strips) const;
    void addEdges();
    void addChain(int left, int right, const std::vector<const MeshEdge*>& lines);
    void setConvexity(Edge& edge, const MeshEdge& line) const;
    static void setCircle(Edge& edge);

    Mesh mesh_;
    MeshTopology topology_;
    Model model_;
    std::vector<std::uint32_t> stripOf_, regionOf_, solidOf_;
    std::vector<Strip> strips_;
    std::vector<std::vector<Vector>> regionPoints_;
    std::size_t regions_ = 0;
};

void Builder::findStrips() {
    Groups groups(mesh_.triangles.size());
    for (const MeshEdge& edge : topology_.edges) {
        if (edge.facets.size() != 2) continue;
        const Vector &n0 = topology_.normals[edge.facets[0]],
                     &n1 = topology_.normals[edge.facets[1]];
        if (angleBetween(n0, n1) < kFlat) groups.join(edge.facets[0], edge.facets[1]);
    }
    strips_.resize(groups.number(stripOf_));
    for (std::uint32_t i = 0; i < mesh_.triangles.size(); ++i) {
        const auto& t = mesh_.triangles[i];
        Strip& strip = strips_[stripOf_[i]];
        const Vector centre =
            (mesh_.vertices[t[0]] + mesh_.vertices[t[1]] + mesh_.vertices[t[2]]) * (1.0 / 3.0);
        strip.centre = strip.centre + centre * topology_.areas[i];
        strip.normal = strip.normal + topology_.normals[i] * topology_.areas[i];
        strip.area += topology_.areas[i];
    }
    for (Strip& strip : strips_) {
        if (strip.area > 0.0) strip.centre = strip.centre * (1.0 / strip.area);
        strip.normal = unit(strip.normal);
    }
}

/// Strips of one curved face meet at a small angle and are about as wide as each other; a flat face
/// beside a rounding is much wider than the rounding's strips.
void Builder::findRegions() {
    Groups groups(strips_.size());
    std::map<std::pair<std::uint32_t, std::uint32_t>, double> shared;
    for (const MeshEdge& edge : topology_.edges) {
        if (edge.facets.size() != 2) continue;
        const std::uint32_t s0 = stripOf_[edge.facets[0]], s1 = stripOf_[edge.facets[1]];
        if (s0 != s1)
            shared[std::minmax(s0, s1)] += distance(mesh_.vertices[edge.a], mesh_.vertices[edge.b]);
    }
    for (const auto& [pair, border] : shared) {
        const Strip &a = strips_[pair.first], &b = strips_[pair.second];
        if (border <= 0.0 || angleBetween(a.normal, b.normal) > kSmoothAngle) continue;
        const double ratio = a.area > b.area ? a.area / b.area : b.area / a.area;
        if (ratio < kSimilarWidth) groups.join(pair.first, pair.second);
    }
    regions_ = groups.number(regionOf_);
}

void Builder::addSolids() {
    Groups groups(mesh_.triangles.size());
    for (const MeshEdge& edge : topology_.edges)
        for (std::size_t i = 1; i < edge.facets.size(); ++i)
            groups.join(edge.facets[0], edge.facets[i]);
    std::vector<std::uint32_t> shellOf;
    const std::size_t shells = groups.number(shellOf);
    std::vector<Solid> found(shells);
    std::vector<bool> open(shells, false);
    for (const MeshEdge& edge : topology_.edges)
        if (edge.facets.size() != 2) open[shellOf[edge.facets[0]]] = true;
    for (std::size_t i = 0; i < mesh_.triangles.size(); ++i) {
        const auto& t = mesh_.triangles[i];
        const Vector &a = mesh_.vertices[t[0]], &b = mesh_.vertices[t[1]],
                     &c = mesh_.vertices[t[2]];
        Solid& solid = found[shellOf[i]];
        const double volume = dot(a, cross(b, c)) / 6.0;
        solid.volume += volume;
        solid.area += topology_.areas[i];
        solid.centre = solid.centre + (a + b + c) * (volume / 4.0);
    }
    // A closed shell with its inside out bounds a hollow of the solid before it.
    std::vector<int> numbers(shells, 0);
    for (std::size_t s = 0; s < shells; ++s) {
        if (open[s]) continue;
        if (found[s].volume < 0.0 && !model_.solids.empty()) {
            Solid& outer = model_.solids.back();
            outer.volume += found[s].volume;
            outer.area += found[s].area;
            outer.centre = outer.centre + found[s].centre;
            numbers[s] = outer.number;
            continue;
        }
        found[s].volume = std::abs(found[s].volume);
        found[s].number = numbers[s] = static_cast<int>(model_.solids.size()) + 1;
        model_.solids.push_back(found[s]);
    }
    for (Solid& solid : model_.solids)
        if (solid.volume > 0.0) solid.centre = solid.centre * (1.0 / solid.volume);
    for (const std::uint32_t shell : shellOf)
        solidOf_.push_back(static_cast<std::uint32_t>(numbers[shell]));
}

/// The kind of a region from the middles of its strips, whose normals pass through the axis of a
/// curved face; the radius from its vertices, which lie on the surface itself.
void Builder::fit(Face& face, const std::vector<std::uint32_t>& strips) const {
    std::vector<Sample> samples;
    for (const std::uint32_t strip : strips)
        if (strips_[strip].area > 0.0)
            samples.push_back({strips_[strip].centre, strips_[strip].normal});
    if (samples.empty()) return;
    const Strip& first = strips_[strips.front()];
    face.point = first.centre;
    face.normal = first.normal;
    if (strips.size() == 1) {
        face.surface = {SurfaceKind::Plane, first.centre, first.normal};
        return;
    }
    const std::vector<Vector>& points = regionPoints_[regionOf_[strips.front()]];
    Box box;
    for (const Vector& point : points)
        add(box, point);
    std::optional<Surface> surface = recognise(samples, 0.02 * diagonal(box), 12.0);
    if (!surface) return;
    if (surface->kind == SurfaceKind::Cylinder || surface->kind == SurfaceKind::Sphere) {
        double sum = 0.0;
        const bool round = surface->kind == SurfaceKind::Sphere;
        for (const Vector& p : points)
            sum += round ? distance(p, surface->origin)
                         : distanceToLine(p, surface->origin, surface->axis);
        surface->radius = sum / static_cast<double>(points.size());
    }
    face.surface = *surface;
    face.concave = isConcave(face.surface, samples.front());
    // The turn of a face with strips all around is whole; else the span of its strips and half a
    // strip at both ends.
    Vector sum;
    for (const Sample& sample : samples)
        sum = sum + sample.normal;
    const double mean = length(sum) / static_cast<double>(samples.size());
    if (mean < 0.05) {
        face.turn = 360.0;
        return;
    }
    double half = 0.0;
    for (const Sample& sample : samples)
        half = std::max(half, angleBetween(unit(sum), sample.normal));
    face.turn = std::min(359.0, 2.0 * half * static_cast<double>(samples.size()) /
                                    std::max(1.0, static_cast<double>(samples.size()) - 1.0));
}

void Builder::addFace(std::uint32_t region, const std::vector<std::uint32_t>& strips) {
    Face face;
    face.number = static_cast<int>(region) + 1;
    for (const std::uint32_t strip : strips)
        face.area += strips_[strip].area;
    fit(face, strips);
    model_.faces.push_back(std::move(face));
}

/// A closed border whose points keep one distance from their middle is a circle.
void Builder::setCircle(Edge& edge) {
    if (edge.vertices[0] != edge.vertices[1] || edge.points.size() < 7) return;
    Vector centre, area;
    const std::size_t count = edge.points.size() - 1;
    for (std::size_t i = 0; i < count; ++i)
        centre = centre + edge.points[i] * (1.0 / static_cast<double>(count));
    double radius = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        area = area + cross(edge.points[i] - centre, edge.points[i + 1] - centre);
        radius += distance(edge.points[i], centre) / static_cast<double>(count);
    }
    for (std::size_t i = 0; i < count; ++i)
        if (std::abs(distance(edge.points[i], centre) - radius) > 1e-3 * radius) return;
    edge.kind = CurveKind::Circle;
    edge.centre = centre;
    edge.radius = radius;
    edge.axis = unit(area);
}

void Builder::setConvexity(Edge& edge, const MeshEdge& line) const {
    if (line.facets.size() != 2) return;
    const auto& t = mesh_.triangles[line.facets[0]];
    const Vector &n0 = topology_.normals[line.facets[0]], &n1 = topology_.normals[line.facets[1]];
    Vector along = mesh_.vertices[line.b] - mesh_.vertices[line.a];
    const bool forward = (t[0] == line.a && t[1] == line.b) || (t[1] == line.a && t[2] == line.b) ||
                         (t[2] == line.a && t[0] == line.b);
    if (!forward) along = -along;
    edge.angle = angleBetween(n0, n1);
    // A rounding meets its flat neighbour at half the angle of its strips.
    edge.convexity = edge.angle < kSmoothAngle / 2     ? Convexity::Smooth
                     : dot(cross(n0, n1), along) > 0.0 ? Convexity::Convex
                                                       : Convexity::Concave;
}

/// Joins lines between the same two faces end to end into edges.
void Builder::addChain(int left, int right, const std::vector<const MeshEdge*>& lines) {
    std::multimap<std::uint32_t, std::size_t> at;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        at.emplace(lines[i]->a, i);
        at.emplace(lines[i]->b, i);
    }
    std::vector<bool> used(lines.size(), false);
    const auto next = [&](std::uint32_t vertex) -> std::ptrdiff_t {
        const auto [first, last] = at.equal_range(vertex);
        // Where more than two meet none goes on; how many more is not worth counting.
        std::ptrdiff_t found = -1, seen = 0;
        for (auto it = first; it != last; ++it) {
            if (++seen > 2) return -1;
            if (found < 0 && !used[it->second]) found = static_cast<std::ptrdiff_t>(it->second);
        }
        return found;
    };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (used[i]) continue;
        used[i] = true;
        std::vector<std::uint32_t> chain{lines[i]->a, lines[i]->b};
        for (int side = 0; side < 2; ++side) {
            for (std::ptrdiff_t k = next(chain.back()); k >= 0; k = next(chain.back())) {
                const auto line = static_cast<std::size_t>(k);
                used[line] = true;
                chain.push_back(lines[line]->a == chain.back() ? lines[line]->b : lines[line]->a);
            }
            if (chain.front() == chain.back()) break;
            std::reverse(chain.begin(), chain.end());
        }
        Edge edge;
        edge.number = static_cast<int>(model_.edges.size()) + 1;
        edge.faces = {left, right};
        edge.vertices = {static_cast<int>(chain.front()) + 1, static_cast<int>(chain.back()) + 1};
        for (const std::uint32_t vertex : chain)
            edge.points.push_back(mesh_.vertices[vertex]);
        for (std::size_t k = 1; k < edge.points.size(); ++k)
            edge.length += distance(edge.points[k - 1], edge.points[k]);
        if (edge.points.size() == 2 ||
            edge.length <= distance(edge.points.front(), edge.points.back()) * (1 + 1e-9))
            edge.kind = CurveKind::Line;
        setConvexity(edge, *lines[i]);
        setCircle(edge);
        for (const int face : edge.faces)
            if (face > 0)
                model_.faces[static_cast<std::size_t>(face - 1)].loops.push_back({edge.number});
        model_.edges.push_back(std::move(edge));
    }
}

void Builder::addEdges() {
    std::map<std::pair<int, int>, std::vector<const MeshEdge*>> borders;
    for (const MeshEdge& edge : topology_.edges) {
        const int left = mesh_.faces[edge.facets[0]];
        const int right = edge.facets.size() == 2 ? mesh_.faces[edge.facets[1]] : 0;
        if (left != right) borders[{left, right}].push_back(&edge);
    }
    std::map<std::pair<int, int>, std::vector<const MeshEdge*>> joined;
    for (auto& [pair, lines] : borders) {
        const auto key =
            pair.second == 0 ? pair : std::pair<int, int>(std::minmax(pair.first, pair.second));
        auto& all = joined[key];
        all.insert(all.end(), lines.begin(), lines.end());
    }
    for (const auto& [pair, lines] : joined)
        addChain(pair.first, pair.second, lines);
}

Result Builder::build() {
    findStrips();
    findRegions();
    addSolids();
    std::vector<std::vector<std::uint32_t>> members(regions_);
    for (std::uint32_t strip = 0; strip < strips_.size(); ++strip)
        members[regionOf_[strip]].push_back(strip);
    regionPoints_.resize(regions_);
    for (std::size_t i = 0; i < mesh_.triangles.size(); ++i) {
        const std::uint32_t region = regionOf_[stripOf_[i]];
        mesh_.faces.push_back(static_cast<int>(region) + 1);
        for (const std::uint32_t vertex : mesh_.triangles[i])
            regionPoints_[region].push_back(mesh_.vertices[vertex]);
    }
    for (std::uint32_t region = 0; region < regions_; ++region)
        addFace(region, members[region]);
    for (std::size_t i = 0; i < mesh_.triangles.size(); ++i)
        model_.faces[static_cast<std::size_t>(mesh_.faces[i] - 1)].solid =
            static_cast<int>(solidOf_[i]);
    addEdges();
    model_.isMesh = true;
    Result result;
    result.model = std::move(model_);
    return result;
}

class FacetShape : public Shape {
public:
    explicit FacetShape(Mesh mesh) : mesh_(std::move(mesh)) {}
    Mesh mesh(double /*deviation*/) override { return mesh_; }
    Box box(const Frame& frame) override {
        Box box;
        for (const Vector& v : mesh_.vertices)
            add(box, {dot(v, frame.x), dot(v, frame.y), dot(v, frame.z)});
        return box;
    }
    std::vector<int> invalidFaces() override { return {}; }

private:
    Mesh mesh_;
};

}  // namespace

Result modelOf(Mesh mesh) {
    Builder builder(std::move(mesh));
    Result result = builder.build();
    result.shape = std::make_unique<FacetShape>(builder.takeMesh());
    return result;
}

}  // namespace corvane::part::reading
