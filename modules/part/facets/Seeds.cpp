#include "Seeds.h"

#include <algorithm>

#include "../Vec.h"

namespace corvane::part::facets {
namespace {

constexpr std::size_t kMostNeighbours = 6;  // that a seed looks at
constexpr std::size_t kMostRows = 3;        // with long borders that it looks across
constexpr std::size_t kMostPatch = 150;     // strips of a patch that a seed is fitted with

constexpr SurfaceKind kSimple[]{SurfaceKind::Cylinder, SurfaceKind::Cone, SurfaceKind::Sphere};
constexpr SurfaceKind kAll[]{SurfaceKind::Cylinder, SurfaceKind::Cone, SurfaceKind::Sphere,
                             SurfaceKind::Torus};

/// How many times the area of a simpler surface another must hold to be better. A torus of a large
/// radius holds a straight rounding and beyond its ends a little of what follows there.
constexpr double clearly(SurfaceKind kind) {
    return kind == SurfaceKind::Torus ? 1.5 : 1.15;
}

}  // namespace

std::optional<Region> Seeds::bestOf(std::uint32_t seed, double loose) {
    const std::vector<Neighbour> around = smoothAround(seed);
    if (around.size() < 2) return std::nullopt;
    tolerance_ = std::max(strips_.rounding(), loose * sagAt(seed, around));
    best_.reset();
    tryPairs(seed, around);
    tryRows(seed, around);
    tryPatches(seed, around);
    if (best_) simplify();
    // A loose surface passes a point by chance quite often.
    if (best_ &&
        (!grower_.isProven(*best_, loose > 0.0 ? 3 : 1) || grower_.isChance(*best_, tolerance_)))
        best_.reset();
    return std::move(best_);
}

std::vector<Neighbour> Seeds::smoothAround(std::uint32_t strip) const {
    std::vector<Neighbour> found;
    for (const Neighbour& next : strips_.neighboursOf(strip))
        if (next.angle <= kSmoothAngle && claims_.isOpen(next.strip)) found.push_back(next);
    std::stable_sort(found.begin(), found.end(),
                     [](const Neighbour& l, const Neighbour& r) { return l.length > r.length; });
    if (found.size() > kMostNeighbours) found.resize(kMostNeighbours);
    return found;
}

/// How far the middle of a facet there is from the surface, about.
double Seeds::sagAt(std::uint32_t seed, const std::vector<Neighbour>& around) const {
    double sag = 0.0;
    for (const Neighbour& next : around)
        sag = std::max(sag, distance(strips_[seed].centre, strips_[next.strip].centre) *
                                radians(next.angle) / 8.0);
    return sag;
}

/// A few strips may tell of a sphere, which needs least points, or of a torus, which fits best
/// what a file rounds: many of them may tell of something simpler.
void Seeds::simplify() {
    const Region found = *best_;
    std::vector<std::uint32_t> part = found.strips;
    if (part.size() > kMostPatch) part.resize(kMostPatch);
    for (const SurfaceKind kind : kSimple) {
        if (kind == found.surface.kind) return;
        std::optional<Region> region = grower_.grow(kind, part, tolerance_);
        if (!region ||
            clearly(found.surface.kind) * grower_.areaOf(*region) < grower_.areaOf(found))
            continue;
        best_ = std::move(region);
        return;
    }
}

bool Seeds::isHeld(std::span<const std::uint32_t> strips) const {
    return best_ && std::all_of(strips.begin(), strips.end(), [&](std::uint32_t strip) {
               return std::find(best_->strips.begin(), best_->strips.end(), strip) !=
                      best_->strips.end();
           });
}

void Seeds::tryOn(std::span<const std::uint32_t> strips, std::span<const SurfaceKind> kinds) {
    for (const SurfaceKind kind : kinds) {
        std::optional<Region> region = grower_.grow(kind, strips, tolerance_);
        if (!region) continue;
        if (!best_ || grower_.areaOf(*region) > clearly(kind) * grower_.areaOf(*best_))
            best_ = std::move(region);
    }
}

void Seeds::tryPairs(std::uint32_t seed, const std::vector<Neighbour>& around) {
    for (std::size_t i = 1; i < around.size(); ++i)
        for (std::size_t k = 0; k < i; ++k) {
            const std::uint32_t three[]{seed, around[k].strip, around[i].strip};
            if (!isHeld(three)) tryOn(three, kSimple);
        }
}

/// The last row of a surface has only one neighbour on it, whose other neighbours tell more.
void Seeds::tryRows(std::uint32_t seed, const std::vector<Neighbour>& around) {
    for (std::size_t i = 0; i < std::min(kMostRows, around.size()); ++i) {
        const std::uint32_t second = around[i].strip;
        const std::vector<Neighbour> beyond = smoothAround(second);
        for (std::size_t k = 0; k < std::min(kMostRows, beyond.size()); ++k) {
            const std::uint32_t three[]{seed, second, beyond[k].strip};
            if (beyond[k].strip != seed && !isHeld(three)) tryOn(three, kSimple);
        }
    }
}

/// Where the surface goes on smoothly beyond what the best one holds, patches around the seed
/// and around its neighbours tell of it: a row of a torus alone looks like a cone.
void Seeds::tryPatches(std::uint32_t seed, const std::vector<Neighbour>& around) {
    std::vector<double> angles;
    std::vector<std::uint32_t> middles{seed};
    for (const Neighbour& next : around) {
        angles.push_back(next.angle);
        const std::uint32_t one[]{next.strip};
        if (!isHeld(one)) middles.push_back(next.strip);
    }
    if (best_ && middles.size() == 1) return;
    std::sort(angles.begin(), angles.end());
    const double step = angles[angles.size() / 2];
    for (const std::uint32_t middle : middles)
        for (const double reach : {1.35 * step, std::max(2.7 * step, 12.0)}) {
            const std::vector<std::uint32_t> patch = patchAround(middle, seed, reach);
            if (patch.size() > 3 && !isHeld(patch)) tryOn(patch, kAll);
        }
}

/// The open strips around the middle whose normals are within the reach of its own; none if the
/// seed is not among them.
std::vector<std::uint32_t> Seeds::patchAround(std::uint32_t middle, std::uint32_t seed,
                                              double reach) const {
    std::vector<std::uint32_t> patch{middle};
    bool holdsSeed = middle == seed;
    const auto belongs = [&](const Neighbour& next) {
        return next.angle <= kSmoothAngle && claims_.isOpen(next.strip) &&
               angleBetween(strips_[middle].normal, strips_[next.strip].normal) <= reach &&
               std::find(patch.begin(), patch.end(), next.strip) == patch.end();
    };
    for (std::size_t i = 0; i < patch.size(); ++i)
        for (const Neighbour& next : strips_.neighboursOf(patch[i])) {
            if (patch.size() == kMostPatch) break;
            if (!belongs(next)) continue;
            patch.push_back(next.strip);
            holdsSeed = holdsSeed || next.strip == seed;
        }
    if (!holdsSeed) patch.clear();
    return patch;
}

}  // namespace corvane::part::facets
