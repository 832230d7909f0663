#include "EdgeCurves.h"

#include <algorithm>
#include <cmath>

#include "../Vec.h"

namespace corvane::part::facets {
namespace {

/// A circle around the axis of a face beside it has the axis of that face, which many more
/// facets tell.
void takeAxis(const Model& model, double tolerance, Edge& edge) {
    for (const int number : edge.faces) {
        if (number == 0) continue;
        const Surface& s = model.face(number).surface;
        if (s.kind != SurfaceKind::Cylinder && s.kind != SurfaceKind::Cone &&
            s.kind != SurfaceKind::Torus)
            continue;
        const Vector foot = ontoLine(edge.centre, s.origin, s.axis);
        const double slack = std::max(20.0 * tolerance, 1e-3 * edge.radius);
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

/// The circle through three of the points, if the others are on it.
void setCircle(const Model& model, double tolerance, Edge& edge) {
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
    const double slack = std::max(8.0 * tolerance, 1e-4 * radius);
    for (const Vector& point : edge.points)
        if (!(std::abs(distance(point, centre) - radius) <= slack &&
              std::abs(dot(point - centre, axis)) <= slack))
            return;
    edge.kind = CurveKind::Circle;
    edge.centre = centre;
    edge.radius = radius;
    edge.axis = axis;
    takeAxis(model, tolerance, edge);
}

}  // namespace

void setCurve(const Model& model, double tolerance, Edge& edge) {
    for (std::size_t k = 1; k < edge.points.size(); ++k)
        edge.length += distance(edge.points[k - 1], edge.points[k]);
    const Vector along = unit(edge.points.back() - edge.points.front());
    const bool straight = std::all_of(edge.points.begin(), edge.points.end(), [&](const Vector& p) {
        return distanceToLine(p, edge.points.front(), along) <= tolerance;
    });
    if (straight && length(along) > 0.5)
        edge.kind = CurveKind::Line;
    else if (edge.points.size() > 3)
        setCircle(model, tolerance, edge);
}

}  // namespace corvane::part::facets
