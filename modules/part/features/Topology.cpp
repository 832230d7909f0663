#include "Topology.h"

#include <array>
#include <cmath>
#include <map>

#include "../Vec.h"

namespace corvane::part::features {
namespace {

constexpr double kRelative = 1e-6;      // of the part's size
constexpr double kMeshRelative = 1e-3;  // facets of a fine mesh keep to their surface this well

bool finite(const Vector& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool isSound(const Face& face, double size) {
    const Surface& s = face.surface;
    if (!finite(s.origin) || !finite(s.axis) || !finite(face.point) || !finite(face.normal))
        return false;
    const double numbers[]{s.radius, s.minorRadius, s.halfAngle, face.area, face.turn};
    for (const double number : numbers)
        if (!std::isfinite(number) || number < 0.0) return false;
    // Far larger surfaces are flat by all that can be measured here.
    if (!(face.area > 0.0) || s.radius > 1e4 * size || length(s.origin - face.point) > 1e6 * size)
        return false;
    return s.kind == SurfaceKind::Other || std::abs(length(s.axis) - 1.0) < 1e-6;
}

bool isSound(const Edge& edge, int faces) {
    for (const int face : edge.faces)
        if (face < 0 || face > faces) return false;
    for (const Vector& point : edge.points)
        if (!finite(point)) return false;
    return finite(edge.centre) && finite(edge.axis) && std::isfinite(edge.radius);
}

}  // namespace

Topology::Topology(const Model& model) : model_(model) {
    const int faces = static_cast<int>(model.faces.size());
    Box box;
    for (const Edge& edge : model.edges) {
        if (!isSound(edge, faces)) return;
        for (const Vector& point : edge.points)
            add(box, point);
    }
    size_ = diagonal(box);
    if (!std::isfinite(size_)) size_ = 0.0;
    centre_ = (box.least + box.greatest) * 0.5;
    near_ = size_ * (model.isMesh ? kMeshRelative : kRelative);
    slack_ = model.isMesh ? 1.0 : 0.01;
    edges_.resize(model.faces.size());
    for (const Face& face : model.faces) {
        sound_.push_back(isSound(face, size_));
        std::vector<int>& edges = edges_[sound_.size() - 1];
        for (const std::vector<int>& loop : face.loops)
            for (const int edge : loop)
                if (model.edge(edge).faces[0] != model.edge(edge).faces[1]) edges.push_back(edge);
        std::sort(edges.begin(), edges.end());
        edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    }
}

int Topology::across(int edge, int face) const {
    const auto& faces = model_.edge(edge).faces;
    return faces[0] == face ? faces[1] : faces[0];
}

bool Topology::parallel(const Vector& a, const Vector& b) const {
    return angleBetweenLines(a, b) <= slack_;
}

bool Topology::onAxis(const Surface& s, const Vector& origin, const Vector& axis) const {
    if (s.kind == SurfaceKind::Plane || s.kind == SurfaceKind::Other) return false;
    if (s.kind != SurfaceKind::Sphere && !parallel(s.axis, axis)) return false;
    // Two lines at a hair's angle part far from their origins: they are compared near the part.
    const double shift = s.kind == SurfaceKind::Sphere ? 0.0 : dot(origin - s.origin, s.axis);
    return distanceToLine(s.origin + s.axis * shift, origin, axis) <= near_;
}

Range Topology::rangeOf(int face, const Vector& direction) const {
    Range range;
    for (const int edge : edgesOf(face))
        range.add(rangeAlong(model_, model_.edge(edge), direction));
    return range;
}

double Topology::turnOf(const std::vector<int>& faces, const Vector& origin,
                        const Vector& axis) const {
    const Vector x = squareTo(axis), y = cross(axis, x);
    std::vector<std::pair<double, double>> arcs;
    for (const int number : faces) {
        const Face& face = model_.face(number);
        if (face.turn >= 359.999) return 360.0;
        if (faces.size() == 1) return face.turn;
        std::vector<double> angles;
        for (const int edge : edgesOf(number))
            for (const Vector& p : model_.edge(edge).points)
                angles.push_back(degrees(std::atan2(dot(p - origin, y), dot(p - origin, x))));
        if (angles.empty()) continue;
        std::sort(angles.begin(), angles.end());
        // The face begins after that gap between its points which is as wide as it leaves open.
        double start = angles.front(), best = 1e300;
        for (std::size_t i = 0; i < angles.size(); ++i) {
            const double gap =
                i > 0 ? angles[i] - angles[i - 1] : angles[0] + 360.0 - angles.back();
            const double miss = std::abs(gap - (360.0 - face.turn));
            if (miss >= best) continue;
            best = miss;
            start = angles[i];
        }
        arcs.emplace_back(start, start + face.turn);
        arcs.emplace_back(start - 360.0, start - 360.0 + face.turn);
        arcs.emplace_back(start + 360.0, start + 360.0 + face.turn);
    }
    std::sort(arcs.begin(), arcs.end());
    double covered = 0.0, end = -180.0;
    for (const auto& [from, to] : arcs) {
        covered += std::max(0.0, std::min(to, 180.0) - std::max(from, end));
        end = std::max(end, to);
    }
    return covered > 359.99 ? 360.0 : covered;
}

namespace {

bool goesOn(const Topology& topology, int edge, int face) {
    const int other = topology.across(edge, face);
    if (other == 0) return false;
    const Surface &here = topology.model().face(face).surface,
                  &there = topology.model().face(other).surface;
    return here.kind == SurfaceKind::Plane && there.kind == SurfaceKind::Plane &&
           dot(here.axis, there.axis) > 0.0 && topology.parallel(here.axis, there.axis);
}

}  // namespace

Sides::Sides(const Topology& topology) {
    const Model& model = topology.model();
    sideOf_.assign(model.faces.size(), model.faces.size());
    for (const Face& first : model.faces) {
        const auto take = [&](int face) {
            std::size_t& side = sideOf_[static_cast<std::size_t>(face - 1)];
            if (side < model.faces.size()) return;
            side = sides_.size() - 1;
            sides_.back().faces.push_back(face);
        };
        if (sideOf_[static_cast<std::size_t>(first.number - 1)] < model.faces.size()) continue;
        Side& side = sides_.emplace_back();
        take(first.number);
        for (std::size_t i = 0; i < side.faces.size(); ++i) {
            const int face = side.faces[i];
            for (const int edge : topology.edgesOf(face))
                if (goesOn(topology, edge, face)) take(topology.across(edge, face));
            if (model.face(face).loops.empty()) continue;
            for (const int edge : model.face(face).loops.front())
                if (topology.across(edge, face) != face && !goesOn(topology, edge, face))
                    side.border.push_back(edge);
        }
    }
}

Axes::Axes(const Topology& topology) {
    const Model& model = topology.model();
    const double cell = 10.0 * topology.near();
    struct Line {
        Vector foot, axis;
        int number;
    };
    using Key = std::array<std::int64_t, 3>;
    std::map<Key, std::vector<Line>> lines;
    for (const Face& face : model.faces) {
        axisOf_.push_back(-1);
        const SurfaceKind kind = face.surface.kind;
        const bool hasAxis = kind == SurfaceKind::Cylinder || kind == SurfaceKind::Cone ||
                             kind == SurfaceKind::Torus;
        if (!hasAxis || !topology.sound(face.number)) continue;
        const Vector foot = ontoLine(topology.centre(), face.surface.origin, face.surface.axis);
        const Vector from = foot - topology.centre();
        const Key key{std::llround(from.x / cell), std::llround(from.y / cell),
                      std::llround(from.z / cell)};
        for (int k = 0; k < 27 && axisOf_.back() < 0; ++k) {
            const auto found =
                lines.find({key[0] + k % 3 - 1, key[1] + k / 3 % 3 - 1, key[2] + k / 9 - 1});
            if (found == lines.end()) continue;
            for (const Line& line : found->second)
                if (topology.onAxis(face.surface, line.foot, line.axis))
                    axisOf_.back() = line.number;
        }
        if (axisOf_.back() >= 0) continue;
        axisOf_.back() = static_cast<int>(count_++);
        lines[key].push_back({foot, face.surface.axis, axisOf_.back()});
    }
}

}  // namespace corvane::part::features
