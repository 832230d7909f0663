#include "SmallestBox.h"

#include <array>
#include <numeric>

#include "Directions.h"
#include "Vec.h"

namespace corvane::part {
namespace {

using reading::Frame;

/// Directions that are tried for one axis of the box; a part with more has its boxes near to these.
constexpr std::size_t kMostDirections = 64;

struct Point2 {
    double x, y;
};

double turn(const Point2& o, const Point2& a, const Point2& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

/// The convex hull, counter-clockwise.
std::vector<Point2> hullOf(std::vector<Point2> points) {
    std::sort(points.begin(), points.end(),
              [](const Point2& l, const Point2& r) { return l.x != r.x ? l.x < r.x : l.y < r.y; });
    std::vector<Point2> hull;
    for (int side = 0; side < 2; ++side) {
        const std::size_t first = hull.size();
        for (const Point2& p : points) {
            while (hull.size() >= first + 2 && turn(hull[hull.size() - 2], hull.back(), p) <= 0)
                hull.pop_back();
            hull.push_back(p);
        }
        hull.pop_back();
        std::reverse(points.begin(), points.end());
    }
    return hull;
}

struct Side {
    Point2 along;
    double length;
};

/// The sides of a hull. Of the many of a round one, whose boxes hardly differ, the longest.
std::vector<Side> sidesOf(const std::vector<Point2>& hull) {
    constexpr std::size_t kMostSides = 200;
    std::vector<Side> sides;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Point2 &a = hull[i], &b = hull[(i + 1) % hull.size()];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        if (length > 0.0) sides.push_back({{(b.x - a.x) / length, (b.y - a.y) / length}, length});
    }
    if (sides.size() <= kMostSides) return sides;
    std::stable_sort(sides.begin(), sides.end(),
                     [](const Side& l, const Side& r) { return l.length > r.length; });
    sides.resize(kMostSides);
    return sides;
}

struct Candidate {
    Frame frame;
    double volume = 1e300;
};

/// The best box with one axis along `z`: the least rectangle around a hull has a side along one of
/// the hull's.
void tryAxis(const Vector& z, const std::vector<Vector>& points, Candidate& best) {
    const Vector x = squareTo(z), y = cross(z, x);
    std::vector<Point2> flat;
    flat.reserve(points.size());
    double low = 1e300, high = -1e300;
    for (const Vector& p : points) {
        flat.push_back({dot(p, x), dot(p, y)});
        low = std::min(low, dot(p, z));
        high = std::max(high, dot(p, z));
    }
    const std::vector<Point2> hull = hullOf(std::move(flat));
    for (const auto& [along, size] : sidesOf(hull)) {
        double u0 = 1e300, u1 = -1e300, v0 = 1e300, v1 = -1e300;
        for (const Point2& p : hull) {
            const double u = p.x * along.x + p.y * along.y, v = p.y * along.x - p.x * along.y;
            u0 = std::min(u0, u);
            u1 = std::max(u1, u);
            v0 = std::min(v0, v);
            v1 = std::max(v1, v);
        }
        const double volume = (u1 - u0) * (v1 - v0) * (high - low);
        if (volume < best.volume * (1.0 - 1e-9)) {
            const Vector side3 = x * along.x + y * along.y;
            best = {{side3, cross(z, side3), z}, volume};
        }
    }
}

/// Few points with the same hull in every direction but for a sliver: the extremes along many
/// directions.
std::vector<Vector> extremes(const Mesh& mesh) {
    constexpr std::size_t kEnough = 5000;
    constexpr int kDirections = 256;
    if (mesh.vertices.size() <= kEnough) return mesh.vertices;
    std::vector<Vector> points;
    std::vector<bool> taken(mesh.vertices.size(), false);
    for (int i = 0; i < kDirections; ++i) {
        // Directions spread over the sphere on a spiral.
        const double z = 1.0 - (2.0 * i + 1.0) / kDirections, turnBy = i * 2.39996322972865332;
        const double r = std::sqrt(1.0 - z * z);
        const Vector d{r * std::cos(turnBy), r * std::sin(turnBy), z};
        std::size_t best = 0;
        double most = -1e300;
        for (std::size_t k = 0; k < mesh.vertices.size(); ++k) {
            const double value = dot(mesh.vertices[k], d);
            if (value > most) {
                most = value;
                best = k;
            }
        }
        if (!taken[best]) points.push_back(mesh.vertices[best]);
        taken[best] = true;
    }
    return points;
}

double volumeOf(const Box& box) {
    const Vector size = box.greatest - box.least;
    return size.x * size.y * size.z;
}

}  // namespace

OrientedBox findSmallestBox(const Model& model, const Mesh& mesh, const Box& aligned,
                            const std::function<Box(const Frame&)>& exact) {
    OrientedBox result;
    const std::vector<Vector> points = extremes(mesh);
    if (points.empty()) return result;
    Candidate best;
    for (const Vector& direction : directionsOf(model, kMostDirections))
        tryAxis(direction, points, best);
    Box box = exact(best.frame);
    // What the facets lack may turn the balance, and few directions are tried.
    if (volumeOf(aligned) < volumeOf(box)) {
        best.frame = {};
        box = aligned;
    }
    const std::array<Vector, 3> axes{best.frame.x, best.frame.y, best.frame.z};
    const Vector size = box.greatest - box.least, middle = (box.greatest + box.least) * 0.5;
    const std::array<double, 3> sizes{size.x, size.y, size.z};
    result.centre = axes[0] * middle.x + axes[1] * middle.y + axes[2] * middle.z;
    std::array<std::size_t, 3> order{0, 1, 2};
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t l, std::size_t r) { return sizes[l] > sizes[r]; });
    for (std::size_t i = 0; i < 3; ++i) {
        result.axes[i] = axes[order[i]];
        result.sizes[i] = sizes[order[i]];
    }
    return result;
}

}  // namespace corvane::part
