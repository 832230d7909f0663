#include "Probe.h"

namespace corvane::part::walls {
namespace {

// Cosines between the outward normals of two places.
const double kWall = std::cos(radians(150.0));  // the sides of a wall
const double kEdge = std::cos(radians(170.0));  // beside an edge that both faces share
/// What stops a sphere. Less than kWall, so that the ridge between two slopes stops it.
const double kObstacle = std::cos(radians(120.0));
const double kAway = std::cos(radians(91.0));

/// A ray that is not longer than this many diameters is what the sphere of a faceted pin, which
/// touches everywhere, would have found.
constexpr double kAsLong = 1.06;
/// Distances below this part of the part's size are the same place.
constexpr double kSame = 2e-6;
/// Facets are at most this part of the part's size outside the surface.
constexpr double kDeviation = 1.0 / 2000;

}  // namespace

Probe::Probe(const Skin& skin, Medium medium)
    : skin_(skin), medium_(medium), tiny_(skin.size() * kSame) {
    const Convexity sharp = medium == Medium::Material ? Convexity::Convex : Convexity::Concave;
    for (const Edge& edge : skin.model().edges)
        if (edge.convexity == sharp) edges_.push_back(std::minmax(edge.faces[0], edge.faces[1]));
    std::sort(edges_.begin(), edges_.end());
}

int Probe::bodyOf(std::uint32_t triangle) const {
    return medium_ == Medium::Material ? static_cast<int>(skin_.body(triangle)) : Bvh::kAnyBody;
}

bool Probe::isWall(int face, int opposite, double cosine) const {
    if (cosine > kWall) return false;
    if (cosine <= kEdge) return true;
    return !std::binary_search(edges_.begin(), edges_.end(),
                               std::pair<int, int>(std::minmax(face, opposite)));
}

bool Probe::shoot(const Sample& sample, End& end, double& distance) const {
    const Vector in = medium_ == Medium::Material ? -sample.normal : sample.normal;
    const Bvh::Hit hit =
        skin_.tree().ray(sample.point, in, -tiny_, 2.0 * skin_.size(),
                         {sample.normal, kAway, bodyOf(sample.triangle), &pace_.work});
    if (!hit) return false;
    const Skin::Spot spot = skin_.exactly(hit.triangle, hit.point);
    const double slope = dot(in, spot.normal);
    distance = hit.distance + (std::abs(slope) > 0.1 ? spot.shift / slope : 0.0);
    end = {sample.point + in * distance, spot.normal, hit.triangle};
    return distance > tiny_;
}

/// Makes a sphere through the sample, at most as large as one that touches `end`, smaller until
/// nothing is inside. `end` becomes the place that it touches.
double Probe::shrink(const Sample& sample, double radius, End& end) const {
    constexpr int kMostSteps = 40;
    constexpr double kEnough = 1e-6;
    const Vector in = medium_ == Medium::Material ? -sample.normal : sample.normal;
    const Bvh::Filter filter{sample.normal, kObstacle, bodyOf(sample.triangle), &pace_.work};
    for (int step = 0; step < kMostSteps; ++step) {
        const Vector centre = sample.point + in * radius;
        const double reach = std::min(radius * 1.02 + skin_.size() * kDeviation, radius * 1.2);
        const Bvh::Hit hit = skin_.tree().nearest(centre, reach, filter);
        if (!hit) break;
        const Skin::Spot spot = skin_.exactly(hit.triangle, hit.point);
        const Vector chord = spot.point - sample.point;
        const double depth = dot(chord, in), squared = dot(chord, chord);
        if (squared <= tiny_ * tiny_ || depth <= 0.0) break;
        const double smaller = squared / (2.0 * depth);
        if (smaller >= radius * (1.0 - kEnough)) break;
        radius = smaller;
        end = {spot.point, spot.normal, hit.triangle};
    }
    return radius;
}

/// The sphere is seldom much larger than that of the sample before, which costs fewer steps than to
/// begin with one that fills the part.
double Probe::inscribe(const Sample& sample, double most, End& end) const {
    constexpr double kLarger = 1.5;
    const double guess = last_ * kLarger;
    if (guess > 0.0 && guess < most) {
        End touched = end;
        const double radius = shrink(sample, guess, touched);
        if (radius < guess) {
            end = touched;
            return last_ = radius;
        }
    }
    return last_ = shrink(sample, most, end);
}

/// Where a sphere does not touch a facet flat, it touches a ridge between two slopes, or it only
/// seems to: at a convex edge it reaches through the face on the other side.
bool Probe::touches(const Sample& sample, double radius, const End& end) const {
    constexpr double kFlat = 0.98, kInside = 0.9;
    const Vector in = medium_ == Medium::Material ? -sample.normal : sample.normal;
    const Vector centre = sample.point + in * radius;
    const double slope = dot(end.normal, unit(end.point - centre));
    if (std::abs(slope) > kFlat) return true;
    return !skin_.tree().nearest(centre, radius * kInside,
                                 {{}, 1.0, bodyOf(sample.triangle), &pace_.work});
}

Probe::Measured Probe::measureRay(const Sample& sample) const {
    End end;
    double distance = 0.0;
    if (!shoot(sample, end, distance)) return {};
    Measured ray = measured(sample, distance, end);
    ray.isWall = isWall(ray.place.faces[0], ray.place.faces[1], dot(sample.normal, end.normal));
    return ray;
}

Probe::Reading Probe::measure(const Sample& sample) const {
    Reading reading;
    const Measured ray = reading.ray = measureRay(sample);
    const double distance = ray.place.value;
    if (!(distance > 0.0)) return reading;
    End end{ray.place.opposite, ray.normal, ray.triangle};
    const double radius = inscribe(sample, distance / 2, end);
    Measured& sphere = reading.sphere = measured(sample, 2.0 * radius, end);
    // Both places are on the sphere, so the normals at them follow from the chord.
    const Vector in = medium_ == Medium::Material ? -sample.normal : sample.normal;
    const double cosine = dot(unit(end.point - sample.point), in);
    sphere.isWall =
        isWall(sphere.place.faces[0], sphere.place.faces[1], 1.0 - 2.0 * cosine * cosine) &&
        (2.0 * radius < distance ? touches(sample, radius, end) : ray.isWall);
    if (!sphere.isWall && ray.isWall && distance <= 2.0 * radius * kAsLong) sphere = ray;
    return reading;
}

Probe::Measured Probe::measured(const Sample& sample, double value, const End& end) const {
    const std::vector<int>& faces = skin_.mesh().faces;
    return {{value, sample.point, end.point, {faces[sample.triangle], faces[end.triangle]}},
            false,
            end.normal,
            end.triangle};
}

Vector Probe::closing(const Sample& sample, const Vector& opposite) const {
    const Vector along = opposite - sample.normal * dot(opposite, sample.normal);
    return medium_ == Medium::Material ? along : -along;
}

Bvh::Hit Probe::beside(const Sample& sample, const Vector& way) const {
    return skin_.tree().nearest(sample.point + way, length(way) + skin_.size() * kDeviation,
                                {-sample.normal, -0.5, bodyOf(sample.triangle), &pace_.work});
}

}  // namespace corvane::part::walls
