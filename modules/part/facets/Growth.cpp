#include "Growth.h"

#include <algorithm>
#include <cmath>

#include "../Elementary.h"
#include "../Vec.h"
#include "../reading/SurfaceFit.h"

namespace corvane::part::facets {
namespace {

constexpr std::size_t kMostPoints = 240;  // that a fit needs
constexpr std::size_t kSpare = 2;         // points more than a surface needs: too many for chance
constexpr double kWidestTurn = 20.0;      // degrees from a strip's middle to its border
constexpr double kFarthestTurn = 0.82;    // cosine of what a facet turns at most

/// Than usual: what a strip of one surface may turn. One that a border cuts turns half as far as
/// others and may be the usual one; facets are seldom quite even besides.
constexpr double kFarther = 2.5;

// These trade surfaces that are missed in uneven meshes for those that are there by chance. Parts
// of known features come out the same with half and with twice of each.
constexpr double kMoreSag = 8.0;     // than others: what a strip of one surface may sag
constexpr double kFlattest = 100.0;  // radius over size: beyond it nobody meant a round face
constexpr double kAstray = 64.0;     // times the tolerance: how far a piece leads astray
constexpr double kTogether = 2.0;    // times the tolerance: what pieces have in common

/// How many numbers tell where a surface of the kind is, and how large.
std::size_t sizesOf(SurfaceKind kind) {
    switch (kind) {
        case SurfaceKind::Sphere:
            return 4;
        case SurfaceKind::Cylinder:
            return 5;
        case SurfaceKind::Cone:
            return 6;
        default:
            return 7;
    }
}

/// The radius with which the surface bends at the point.
double bendAt(const Surface& s, const Vector& point) {
    switch (s.kind) {
        case SurfaceKind::Cone:
            return distanceToLine(point, s.origin, s.axis) / std::cos(radians(s.halfAngle));
        case SurfaceKind::Torus:
            return s.minorRadius;
        default:
            return s.radius;
    }
}

Vector outwardAt(const Fit& fit, const Offset& offset) {
    return fit.concave ? -offset.outward : offset.outward;
}

}  // namespace

Grower::Grower(const Claims& claims)
    : claims_(claims), strips_(claims.strips()), seen_(strips_.count(), 0) {}

/// The vertices of the strips, or so many of them as a fit needs.
void Grower::collect(std::span<const std::uint32_t> strips) {
    corners_.clear();
    const std::size_t step = std::max<std::size_t>(1, 4 * strips.size() / kMostPoints);
    for (std::size_t i = 0; i < strips.size(); i += step) {
        // A flat strip may have any number of them.
        const auto own = strips_.verticesOf(strips[i]);
        for (std::size_t k = 0; k < own.size(); k += 1 + own.size() / kMostPoints)
            corners_.push_back(own[k]);
    }
    std::sort(corners_.begin(), corners_.end());
    corners_.erase(std::unique(corners_.begin(), corners_.end()), corners_.end());
    points_.clear();
    const std::size_t skip = 1 + corners_.size() / kMostPoints;
    for (std::size_t i = 0; i < corners_.size(); i += skip)
        points_.push_back(strips_.mesh().vertices[corners_[i]]);
}

std::optional<Fit> Grower::fitted(SurfaceKind kind, std::span<const std::uint32_t> seed,
                                  double tolerance) {
    std::vector<reading::Sample> samples;
    for (const std::uint32_t strip : seed)
        samples.push_back({strips_[strip].centre, strips_[strip].normal});
    const std::optional<Surface> start = reading::guess(kind, samples);
    if (!start) return std::nullopt;
    collect(seed);
    // As many points as a surface has sizes lie on one always.
    if (corners_.size() <= sizesOf(kind) || isFlat(seed, tolerance)) return std::nullopt;
    Fit fit{reading::refined(*start, points_, tolerance), false, tolerance};
    Box box;
    double bend = 0.0;
    for (const Vector& point : points_) {
        if (!(std::abs(offsetFrom(fit.surface, point).distance) <= tolerance)) return std::nullopt;
        add(box, point);
        bend = std::max(bend, bendAt(fit.surface, point));
    }
    if (!(bend < kFlattest * diagonal(box))) return std::nullopt;
    fit.concave = dot(offsetFrom(fit.surface, samples[0].point).outward, samples[0].normal) < 0.0;
    if (!limitTurn(fit, seed)) return std::nullopt;
    return fit;
}

/// Whether a plane passes what was collected from the strips: nothing tells then that they curve.
bool Grower::isFlat(std::span<const std::uint32_t> strips, double tolerance) const {
    Vector normal;
    for (const std::uint32_t strip : strips)
        normal = normal + strips_[strip].normal * strips_[strip].area;
    normal = unit(normal);
    double least = 1e300, most = -1e300;
    for (const Vector& point : points_) {
        const double height = dot(point - points_[0], normal);
        least = std::min(least, height);
        most = std::max(most, height);
    }
    return most - least <= 2.0 * tolerance;
}

bool Grower::isProven(const Region& region, std::size_t times) {
    collect(region.strips);
    const std::size_t sizes = sizesOf(region.surface.kind);
    return corners_.size() >= std::max(times * sizes, sizes + kSpare);
}

/// How far strips turn and sag that are like these. Those of one surface do about as far as each
/// other: a flat face whose corners happen to be on a round surface turns farther, or is larger and
/// sags farther, which gives false.
bool Grower::limitTurn(Fit& fit, std::span<const std::uint32_t> seed) const {
    std::vector<double> turns, areas, sags;
    for (const std::uint32_t strip : seed) {
        areas.push_back(strips_[strip].area);
        turns.push_back(degrees(std::acos(std::clamp(cosineOf(fit, strip), -1.0, 1.0))));
        sags.push_back(sagOf(fit, strip));
    }
    std::sort(turns.begin(), turns.end());
    std::sort(areas.begin(), areas.end());
    std::sort(sags.begin(), sags.end());
    fit.area = areas[areas.size() / 2];
    fit.sag = sags.back();
    const double next = sags[sags.size() - std::min<std::size_t>(2, sags.size())];
    const double most = std::min(kWidestTurn, kFarther * turns[turns.size() / 2] + 0.1);
    fit.turn = std::cos(radians(most));
    return turns.back() <= most && sags.back() <= kMoreSag * next + fit.tolerance;
}

/// The least cosine between the normals of the strip and of the surface at its vertices.
double Grower::cosineOf(const Fit& fit, std::uint32_t strip) const {
    double least = 1.0;
    for (const std::uint32_t vertex : strips_.verticesOf(strip)) {
        const Vector& point = strips_.mesh().vertices[vertex];
        const Offset offset = offsetFrom(fit.surface, point);
        // A cone's tip has no normal.
        const bool isTip =
            fit.surface.kind == SurfaceKind::Cone &&
            distanceToLine(point, fit.surface.origin, fit.surface.axis) <= 8.0 * fit.tolerance;
        if (offset.isKnown && !isTip)
            least = std::min(least, dot(outwardAt(fit, offset), strips_[strip].normal));
    }
    return least;
}

double Grower::sagOf(const Fit& fit, std::uint32_t strip) const {
    return std::abs(offsetFrom(fit.surface, strips_[strip].centre).distance);
}

bool Grower::passes(const Fit& fit, std::uint32_t strip) const {
    for (const std::uint32_t vertex : strips_.verticesOf(strip)) {
        const Offset offset = offsetFrom(fit.surface, strips_.mesh().vertices[vertex]);
        if (!(std::abs(offset.distance) <= fit.tolerance)) return false;
    }
    if (strips_.isSliver(strip)) return true;
    // An obtuse facet turns far even where it is small.
    const double cosine = cosineOf(fit, strip), sag = sagOf(fit, strip);
    return sag <= kMoreSag * fit.sag + fit.tolerance &&
           (cosine >= fit.turn ||
            (cosine >= kFarthestTurn && (sag <= fit.sag || strips_[strip].area <= fit.area)));
}

/// Adds what the fit passes around the strips from the last spread on.
void Grower::spread(const Fit& fit, Region& region, std::vector<std::uint32_t>& refused) {
    for (std::size_t i = 0; i < region.strips.size(); ++i) {
        const std::uint32_t strip = region.strips[i];
        for (const Neighbour& next : strips_.neighboursOf(strip)) {
            if (seen_[next.strip] == stamp_ || !claims_.isFree(next.strip)) continue;
            const bool smooth = next.angle <= kSmoothAngle || strips_.isSliver(strip) ||
                                strips_.isSliver(next.strip);
            if (!smooth) continue;
            seen_[next.strip] = stamp_;
            (passes(fit, next.strip) ? region.strips : refused).push_back(next.strip);
        }
    }
}

std::optional<Region> Grower::grow(SurfaceKind kind, std::span<const std::uint32_t> seed,
                                   double tolerance) {
    std::optional<Fit> fit = fitted(kind, seed, tolerance);
    if (!fit) return std::nullopt;
    Region region{fit->surface, fit->concave, {seed.begin(), seed.end()}, {}};
    spreadAll(*fit, region);
    return region;
}

/// Spreads the region from its strips as far as the fit passes, which becomes better with them.
void Grower::spreadAll(Fit& fit, Region& region) {
    ++stamp_;
    for (const std::uint32_t strip : region.strips)
        seen_[strip] = stamp_;
    std::vector<std::uint32_t> refused;
    std::size_t known = region.strips.size();
    constexpr int kRounds = 12;
    for (int round = 0; round < kRounds; ++round) {
        spread(fit, region, refused);
        if (region.strips.size() == known) break;
        // A surface of more strips is known better, and may pass what the first one missed.
        collect(region.strips);
        const Surface better = reading::refined(fit.surface, points_, fit.tolerance);
        const bool holds = std::all_of(points_.begin(), points_.end(), [&](const Vector& point) {
            return std::abs(offsetFrom(better, point).distance) <= fit.tolerance;
        });
        if (!holds) break;
        fit.surface = better;
        const bool little = region.strips.size() < known + known / 10;
        known = region.strips.size();
        for (const std::uint32_t strip : refused)
            seen_[strip] = 0;
        refused.clear();
        if (little) break;
    }
    region.surface = fit.surface;
}

bool Grower::isChance(const Region& region, double tolerance) {
    Fit fit = fitOf(region, kWider * tolerance);
    Region wider = region;
    spreadAll(fit, wider);
    return areaOf(wider) > kMuchMore * areaOf(region) ||
           (region.strips.size() < kMany && claims_.goesOnAlike(region.strips, true));
}

double Grower::areaOf(const Region& region) const {
    double area = 0.0;
    for (const std::uint32_t strip : region.strips)
        area += strips_[strip].area;
    return area;
}

double Grower::supportOf(const Region& region) const {
    double largest = 0.0;
    for (const std::uint32_t strip : region.strips)
        largest = std::max(largest, strips_[strip].area);
    return areaOf(region) - largest;
}

bool Grower::joins(Region& region, const Region& other, double tolerance) {
    if (other.surface.kind != region.surface.kind || other.concave != region.concave) return false;
    const auto isNear = [&](const Surface& surface, double times) {
        return std::all_of(points_.begin(), points_.end(), [&](const Vector& point) {
            return std::abs(offsetFrom(surface, point).distance) <= times * tolerance;
        });
    };
    collect(other.strips);
    if (!isNear(region.surface, kAstray)) return false;
    std::vector<Vector> points = points_;
    collect(region.strips);
    points_.insert(points_.end(), points.begin(), points.end());
    const Surface both = reading::refined(region.surface, points_, kTogether * tolerance);
    if (!isNear(both, kTogether)) return false;
    region.surface = both;
    return true;
}

Fit Grower::fitOf(const Region& region, double tolerance) const {
    Fit fit{region.surface, region.concave, tolerance};
    limitTurn(fit, region.strips);
    return fit;
}

void Grower::widen(Region& region, double tolerance) {
    ++stamp_;
    for (const std::uint32_t strip : region.strips)
        seen_[strip] = stamp_;
    std::vector<std::uint32_t> refused;
    spread(fitOf(region, tolerance), region, refused);
}

}  // namespace corvane::part::facets
