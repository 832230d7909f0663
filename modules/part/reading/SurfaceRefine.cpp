#include <array>
#include <cmath>

#include "../Elementary.h"
#include "../Vec.h"
#include "SurfaceFit.h"

namespace corvane::part::reading {
namespace {

/// How a surface can change: three shifts, three turns around its origin, the radius, and a cone's
/// angle or a torus's second radius. Turns and angles count as arcs of radius `scale`, so that all
/// changes are lengths.
constexpr std::size_t kChanges = 8;
using Changes = std::array<double, kChanges>;

/// By how much the distance of the point grows with each change.
Changes growth(const Surface& s, const Vector& point, const Offset& offset, double scale) {
    const Vector& n = offset.outward;
    const Vector from = point - s.origin;
    const Vector turn = s.kind == SurfaceKind::Sphere ? Vector{} : cross(from, n) * (-1.0 / scale);
    Changes row{-n.x, -n.y, -n.z, turn.x, turn.y, turn.z, -1.0, 0.0};
    const double along = dot(from, s.axis);
    const Vector radial = from - s.axis * along;
    if (s.kind == SurfaceKind::Torus) {
        row[6] = -dot(n, unit(radial));
        row[7] = -1.0;
    } else if (s.kind == SurfaceKind::Cone) {
        const double half = radians(s.halfAngle), away = length(radial) - s.radius;
        row[6] = -std::cos(half);
        row[7] = -(away * std::sin(half) + along * std::cos(half)) / scale;
    }
    return row;
}

Surface changed(const Surface& s, const Changes& by, double scale) {
    Surface next = s;
    const Vector turn = Vector{by[3], by[4], by[5]} * (1.0 / scale);
    next.origin = s.origin + Vector{by[0], by[1], by[2]};
    next.axis = unit(s.axis + cross(turn, s.axis));
    next.radius += by[6];
    if (s.kind == SurfaceKind::Cone) next.halfAngle += degrees(by[7] / scale);
    if (s.kind == SurfaceKind::Torus) next.minorRadius += by[7];
    return next;
}

/// Solves the symmetric equations by Cholesky's method; false where they are not definite.
bool solve(std::array<Changes, kChanges> m, const Changes& right, Changes& x) {
    for (std::size_t i = 0; i < kChanges; ++i)
        for (std::size_t k = 0; k <= i; ++k) {
            double sum = m[i][k];
            for (std::size_t j = 0; j < k; ++j)
                sum -= m[i][j] * m[k][j];
            if (i == k && !(sum > 0.0)) return false;
            m[i][k] = i == k ? std::sqrt(sum) : sum / m[k][k];
        }
    for (std::size_t i = 0; i < kChanges; ++i) {
        x[i] = right[i];
        for (std::size_t j = 0; j < i; ++j)
            x[i] -= m[i][j] * x[j];
        x[i] /= m[i][i];
    }
    for (std::size_t i = kChanges; i-- > 0;) {
        for (std::size_t j = i + 1; j < kChanges; ++j)
            x[i] -= m[j][i] * x[j];
        x[i] /= m[i][i];
    }
    return true;
}

double cost(const Surface& surface, const std::vector<Vector>& points) {
    double sum = 0.0;
    for (const Vector& point : points) {
        const double away = offsetFrom(surface, point).distance;
        sum += away * away;
    }
    return sum;
}

bool isPossible(const Surface& s) {
    return s.radius > 0.0 && (s.kind != SurfaceKind::Torus || s.minorRadius > 0.0) &&
           (s.kind != SurfaceKind::Cone || (s.halfAngle > 0.0 && s.halfAngle < 90.0));
}

/// The sums of the squares and of the products with the distances.
void addUp(const Surface& surface, const std::vector<Vector>& points, double scale,
           std::array<Changes, kChanges>& squares, Changes& right) {
    squares = {};
    right = {};
    for (const Vector& point : points) {
        const Offset offset = offsetFrom(surface, point);
        const Changes row = growth(surface, point, offset, scale);
        for (std::size_t i = 0; i < kChanges; ++i) {
            right[i] -= row[i] * offset.distance;
            for (std::size_t k = 0; k <= i; ++k)
                squares[i][k] += row[i] * row[k];
        }
    }
}

}  // namespace

Surface refined(const Surface& start, const std::vector<Vector>& points, double tolerance) {
    if (points.empty() || !isPossible(start)) return start;
    Surface best = start;
    Vector mean;
    for (const Vector& point : points)
        mean = mean + point * (1.0 / static_cast<double>(points.size()));
    // The axis turns best around a place near the points.
    if (best.kind == SurfaceKind::Cylinder) best.origin = ontoLine(mean, best.origin, best.axis);
    double scale = 0.0;
    for (const Vector& point : points)
        scale = std::max(scale, distance(point, best.origin));
    double least = cost(best, points), damping = 1e-5;
    std::array<Changes, kChanges> squares{};
    Changes right{}, by{};
    bool moved = true;
    const double enough = static_cast<double>(points.size()) * tolerance * tolerance;
    constexpr int kSteps = 14;
    for (int step = 0; step < kSteps && scale > 0.0 && least > 1e-26 * scale * scale; ++step) {
        if (moved) addUp(best, points, scale, squares, right);
        // Shifts and turns that leave the surface as it is are kept small by the damping.
        std::array<Changes, kChanges> damped = squares;
        for (std::size_t i = 0; i < kChanges; ++i)
            damped[i][i] += damping * squares[i][i] + 1e-9 * static_cast<double>(points.size());
        if (!solve(damped, right, by)) break;
        const Surface next = changed(best, by, scale);
        const double sum = isPossible(next) ? cost(next, points) : 1e300;
        moved = sum < least;
        damping = moved ? damping / 30.0 : damping * 100.0;
        if (!moved && damping > 1e3) break;
        if (!moved) continue;
        const double pace = sum / least;
        best = next;
        least = sum;
        // It stays where it is, or does not come within the tolerance at this pace.
        if (pace > 1.0 - 1e-4 || sum * std::pow(pace, kSteps - 1 - step) > enough) break;
    }
    return best;
}

}  // namespace corvane::part::reading
