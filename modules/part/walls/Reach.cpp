#include "Reach.h"

namespace corvane::part::walls {
namespace {

/// Sine of the angle within which a face is upright, about a twentieth of a degree.
constexpr double kUpright = 1e-3;
/// The start of a ray above the surface, as a part of the part's size.
constexpr double kLift = 1e-5;

}  // namespace

bool Reach::isFree(const Sample& sample, const Vector& direction) const {
    return dot(sample.normal, direction) >= -kUpright && isClear(sample, direction);
}

bool Reach::isClear(const Sample& sample, const Vector& direction) const {
    // Facets on both sides, for the exact surface of a hole is inside its facets.
    const Vector start = skin_.onto(sample.triangle, sample.point) +
                         skin_.facetNormal(sample.triangle) * (skin_.size() * kLift);
    return !skin_.tree().ray(start, direction, 0.0, 2.0 * skin_.size(),
                             {direction, -1e-6, Bvh::kAnyBody, &pace_.work}, true);
}

bool Reach::isHidden(const Sample& sample, const Vector& pull) const {
    const double slope = dot(sample.normal, pull);
    // A facet across the line where its face turns over leans one way, and places on it the other:
    // it would be in its own way.
    const bool turnsOver = slope * dot(skin_.facetNormal(sample.triangle), pull) < 0.0;
    if (slope > kUpright && !turnsOver) return !isClear(sample, pull);
    if (slope < -kUpright && !turnsOver) return !isClear(sample, -pull);
    return !isClear(sample, pull) && !isClear(sample, -pull);
}

}  // namespace corvane::part::walls
