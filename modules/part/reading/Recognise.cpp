#include "Recognise.h"

#include <cmath>

#include "../Elementary.h"
#include "../Vec.h"

namespace corvane::part::reading {
namespace {

bool holds(const Surface& surface, const std::vector<Sample>& samples, double tolerance,
           double slack) {
    const bool concave = isConcave(surface, samples.front());
    for (const Sample& sample : samples) {
        const Offset offset = offsetFrom(surface, sample.point);
        if (!(std::abs(offset.distance) <= tolerance)) return false;
        const bool inward = surface.kind != SurfaceKind::Plane && concave;
        const Vector out = inward ? -offset.outward : offset.outward;
        if (!(angleBetween(out, sample.normal) <= slack)) return false;
    }
    return true;
}

}  // namespace

bool isConcave(const Surface& surface, const Sample& sample) {
    return surface.kind != SurfaceKind::Plane &&
           dot(offsetFrom(surface, sample.point).outward, sample.normal) < 0.0;
}

std::optional<Surface> recognise(const std::vector<Sample>& samples, double tolerance,
                                 double slack) {
    if (samples.size() < 3) return std::nullopt;
    Box box;
    for (const Sample& sample : samples)
        add(box, sample.point);
    for (const SurfaceKind kind :
         {SurfaceKind::Plane, SurfaceKind::Cylinder, SurfaceKind::Sphere, SurfaceKind::Cone}) {
        const std::optional<Surface> surface = guess(kind, samples);
        // A radius far above the face's own size is a flat freeform face and no cylinder that
        // anybody meant.
        if (surface && surface->radius < 100.0 * diagonal(box) &&
            holds(*surface, samples, tolerance, slack))
            return surface;
    }
    return std::nullopt;
}

}  // namespace corvane::part::reading
