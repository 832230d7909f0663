#include "Elementary.h"

#include "Vec.h"

namespace corvane::part {

Offset offsetFrom(const Surface& s, const Vector& point) {
    const Vector from = point - s.origin;
    if (s.kind == SurfaceKind::Plane) return {dot(from, s.axis), s.axis, true};
    if (s.kind == SurfaceKind::Sphere) {
        const double away = length(from);
        return {away - s.radius, unit(from), away > 0.0};
    }
    if (s.kind == SurfaceKind::Other) return {};
    const double along = dot(from, s.axis);
    const Vector radial = from - s.axis * along, out = unit(radial);
    const double away = length(radial);
    if (s.kind == SurfaceKind::Cylinder) return {away - s.radius, out, away > 0.0};
    if (s.kind == SurfaceKind::Torus) {
        const Vector tube = out * (away - s.radius) + s.axis * along;
        const double thick = length(tube);
        return {thick - s.minorRadius, unit(tube), away > 0.0 && thick > 0.0};
    }
    const double half = radians(s.halfAngle), cosine = std::cos(half), sine = std::sin(half);
    return {(away - s.radius) * cosine - along * sine, out * cosine - s.axis * sine, away > 0.0};
}

}  // namespace corvane::part
