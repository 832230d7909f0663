#include "Surroundings.h"

#include <array>
#include <cmath>

#include "corvane/part/Features.h"

namespace corvane::part::features {
namespace {

Box boxOf(const Mesh& mesh, std::uint32_t triangle) {
    Box box;
    for (const std::uint32_t vertex : mesh.triangles[triangle])
        add(box, mesh.vertices[vertex]);
    return box;
}

/// A point by its place along an axis and across it.
struct Local {
    double along, u, v;
};
Local operator+(const Local& a, const Local& b) {
    return {a.along + b.along, a.u + b.u, a.v + b.v};
}
Local operator*(const Local& a, double factor) {
    return {a.along * factor, a.u * factor, a.v * factor};
}
double out(const Local& p) {
    return std::hypot(p.u, p.v);
}

/// A triangle, or what is left of it between two planes.
class Polygon {
public:
    void push_back(const Local& p) { points_[count_++] = p; }
    [[nodiscard]] std::size_t size() const { return count_; }
    [[nodiscard]] bool empty() const { return count_ == 0; }
    [[nodiscard]] Local* begin() { return points_.data(); }
    [[nodiscard]] Local* end() { return points_.data() + count_; }
    [[nodiscard]] const Local* begin() const { return points_.data(); }
    [[nodiscard]] const Local* end() const { return points_.data() + count_; }
    [[nodiscard]] const Local& operator[](std::size_t i) const { return points_[i]; }
    /// The corner after that one.
    [[nodiscard]] const Local& after(std::size_t i) const {
        return points_[i + 1 < count_ ? i + 1 : 0];
    }

private:
    // Each of two cuts adds a corner at most, and rounding one more.
    std::array<Local, 8> points_;
    std::size_t count_ = 0;
};

/// The part of the polygon above (`sign` 1) or below (-1) a place along the axis.
Polygon clipped(const Polygon& polygon, double at, double sign) {
    Polygon kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Local &p = polygon[i], &q = polygon.after(i);
        const double a = (p.along - at) * sign, b = (q.along - at) * sign;
        if (a >= 0.0) kept.push_back(p);
        if ((a > 0.0 && b < 0.0) || (a < 0.0 && b > 0.0)) {
            const double t = a / (a - b);
            kept.push_back(p * (1.0 - t) + q * t);
        }
    }
    return kept;
}

/// Where the line from p to q is nearest to the axis, as a share of the way.
double nearestShare(const Local& p, const Local& q) {
    const double du = q.u - p.u, dv = q.v - p.v, square = du * du + dv * dv;
    return square > 0.0 ? std::clamp(-(p.u * du + p.v * dv) / square, 0.0, 1.0) : 0.0;
}

bool holdsAxis(const Polygon& polygon) {
    bool left = true, right = true;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Local &p = polygon[i], &q = polygon.after(i);
        const double side = p.u * q.v - p.v * q.u;
        left = left && side >= 0.0;
        right = right && side <= 0.0;
    }
    return left != right;
}

double leastOut(const Polygon& polygon) {
    if (polygon.empty()) return kNone;
    if (holdsAxis(polygon)) return 0.0;
    double least = kNone;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Local &p = polygon[i], &q = polygon.after(i);
        const double t = nearestShare(p, q);
        least = std::min(least, out(p * (1.0 - t) + q * t));
    }
    return least;
}

/// The lowest place of a flat polygon within a distance of the axis: in its own middle or slope,
/// on its border, or where its border or itself crosses the circle.
double lowestWithin(const Polygon& polygon, const Local& normal, double radius) {
    double lowest = kNone;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Local &p = polygon[i], &q = polygon.after(i);
        if (out(p) <= radius) lowest = std::min(lowest, p.along);
        const Local step = q + p * -1.0;
        const double a = step.u * step.u + step.v * step.v, b = p.u * step.u + p.v * step.v;
        const double root = b * b - a * (p.u * p.u + p.v * p.v - radius * radius);
        if (!(a > 0.0) || root < 0.0) continue;
        for (const double sign : {-1.0, 1.0}) {
            const double t = (-b + sign * std::sqrt(root)) / a;
            if (t >= 0.0 && t <= 1.0) lowest = std::min(lowest, p.along + step.along * t);
        }
    }
    // The lowest place of the plane on the circle, if the polygon holds it.
    const double across = std::hypot(normal.u, normal.v);
    if (std::abs(normal.along) < 1e-12) return lowest;
    const double share = across > 0.0 ? radius / across : 0.0;
    const double sign = normal.along > 0.0 ? 1.0 : -1.0;
    const Local spot{0.0, normal.u * share * sign, normal.v * share * sign};
    Polygon moved = polygon;
    for (Local& p : moved) {
        p.u -= spot.u;
        p.v -= spot.v;
    }
    if (!holdsAxis(moved)) return lowest;
    const Local& p = polygon[0];
    const double along =
        p.along + (normal.u * (p.u - spot.u) + normal.v * (p.v - spot.v)) / normal.along;
    return std::min(lowest, along);
}

}  // namespace

/// Coordinates along and across a bar.
struct Surroundings::View {
    explicit View(const Bar& bar)
        : origin(bar.origin), axis(bar.axis), x(squareTo(bar.axis)), y(cross(bar.axis, x)) {}
    [[nodiscard]] Local direction(const Vector& d) const {
        return {dot(d, axis), dot(d, x), dot(d, y)};
    }
    [[nodiscard]] Local point(const Vector& p) const { return direction(p - origin); }
    /// What a box takes up: from where to where along, and how near to the axis.
    struct Span {
        double low, high, out;
    };
    [[nodiscard]] Span span(const Vector& middle, const Vector& half) const {
        const auto reach = [&](const Vector& d) {
            return std::abs(d.x) * half.x + std::abs(d.y) * half.y + std::abs(d.z) * half.z;
        };
        const Local c = point(middle);
        const double along = reach(axis), u = std::max(0.0, std::abs(c.u) - reach(x)),
                     v = std::max(0.0, std::abs(c.v) - reach(y));
        return {c.along - along, c.along + along, std::sqrt(u * u + v * v)};
    }
    [[nodiscard]] Polygon polygon(const std::array<Vector, 3>& corners) const {
        Polygon polygon;
        for (const Vector& corner : corners)
            polygon.push_back(point(corner));
        return polygon;
    }
    Vector origin, axis, x, y;
};

Surroundings::Surroundings(const Topology& topology, const Mesh& mesh)
    : topology_(topology), mesh_(mesh), faces_({}), tolerance_(topology.size() / 1000.0) {
    const std::size_t count = topology.model().faces.size();
    std::vector<std::vector<Box>> boxes(count);
    std::vector<std::vector<std::uint32_t>> triangles(count);
    std::vector<Box> faces(count);
    for (std::uint32_t i = 0; i < mesh.triangles.size(); ++i) {
        const auto face = static_cast<std::size_t>(mesh.faces[i] - 1);
        const Box box = boxOf(mesh, i);
        boxes[face].push_back(box);
        triangles[face].push_back(i);
        add(faces[face], box.least);
        add(faces[face], box.greatest);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (triangles[i].empty()) faces[i] = {topology.centre(), topology.centre()};
        patches_.push_back({std::move(triangles[i]), BoxTree(std::move(boxes[i]))});
    }
    faces_ = BoxTree(std::move(faces));
}

bool Surroundings::counts(std::size_t face, const std::vector<int>& except, int solid) const {
    return topology_.model().faces[face].solid == solid &&
           !std::binary_search(except.begin(), except.end(), static_cast<int>(face) + 1);
}

std::array<Vector, 3> Surroundings::corners(std::uint32_t triangle) const {
    const auto& t = mesh_.triangles[triangle];
    return {mesh_.vertices[t[0]], mesh_.vertices[t[1]], mesh_.vertices[t[2]]};
}

double Surroundings::lowestOn(std::uint32_t triangle, const View& view, double radius, bool leaving,
                              double start) const {
    const auto points = corners(triangle);
    const Local normal = view.direction(unit(cross(points[1] - points[0], points[2] - points[0])));
    if (leaving ? normal.along <= 1e-6 : normal.along >= -1e-6) return kNone;
    const Polygon polygon = clipped(view.polygon(points), start, 1.0);
    return polygon.empty() ? kNone : lowestWithin(polygon, normal, radius);
}

double Surroundings::free(const Bar& wide, bool leaving, const std::vector<int>& except,
                          int solid) const {
    const View view(wide);
    // Facets of the wall itself reach into its circle by their tolerance.
    const Bar bar{wide.origin, wide.axis, wide.length, wide.radius * 0.98};
    const double start = leaving ? 0.0 : tolerance_;
    double best = kNone;
    const auto bound = [&](const Vector& middle, const Vector& half) {
        const View::Span span = view.span(middle, half);
        return span.out > bar.radius || span.high < start ? kNone : span.low;
    };
    faces_.search(best, bound, [&](std::uint32_t index) {
        if (!counts(index, except, solid)) return;
        const Face& face = topology_.model().faces[index];
        // A flat face that looks the other way has no facet that counts.
        const double look = dot(face.normal, bar.axis);
        if (face.surface.kind == SurfaceKind::Plane && (leaving ? look < -0.1 : look > 0.1)) return;
        const Patch& patch = patches_[index];
        patch.tree.search(best, bound, [&](std::uint32_t i) {
            best = std::min(best, lowestOn(patch.triangles[i], view, bar.radius, leaving, start));
        });
    });
    return best;
}

double Surroundings::refined(int number, const Bar& bar, double outside) const {
    const Surface& s = topology_.model().face(number).surface;
    if (s.kind != SurfaceKind::Cylinder || !topology_.parallel(s.axis, bar.axis)) return outside;
    const double apart = distanceToLine(s.origin, bar.origin, bar.axis);
    const double exact = std::abs(s.radius - apart);
    return std::abs(exact - outside) <= 2.0 * tolerance_ ? exact : outside;
}

double Surroundings::leastOn(std::uint32_t triangle, const View& view, const Bar& bar) const {
    const auto points = corners(triangle);
    const Local normal = view.direction(unit(cross(points[1] - points[0], points[2] - points[0])));
    const double margin = bar.length * 1e-6;
    const Polygon polygon =
        clipped(clipped(view.polygon(points), margin, 1.0), bar.length - margin, -1.0);
    Local middle{0, 0, 0};
    for (const Local& p : polygon)
        middle = middle + p * (1.0 / static_cast<double>(polygon.size()));
    if (normal.u * middle.u + normal.v * middle.v <= 1e-6 * out(middle)) return kNone;
    return std::max(0.0, refined(mesh_.faces[triangle], bar, leastOut(polygon)) - bar.radius);
}

double Surroundings::beside(const Bar& bar, const std::vector<int>& except, int solid) const {
    const View view(bar);
    double best = kNone;
    const auto bound = [&](const Vector& middle, const Vector& half) {
        const View::Span span = view.span(middle, half);
        const bool past = span.high < 0.0 || span.low > bar.length;
        return past ? kNone : span.out - bar.radius - 2.0 * tolerance_;
    };
    faces_.search(best, bound, [&](std::uint32_t index) {
        if (!counts(index, except, solid)) return;
        const Patch& patch = patches_[index];
        patch.tree.search(best, bound, [&](std::uint32_t i) {
            best = std::min(best, leastOn(patch.triangles[i], view, bar));
        });
    });
    return best;
}

}  // namespace corvane::part::features
