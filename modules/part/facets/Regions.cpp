#include "Regions.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

#include "../Elementary.h"
#include "../Vec.h"
#include "Growth.h"

namespace corvane::part::facets {
namespace {

constexpr std::uint32_t kNoRegion = Grower::kNoRegion;
constexpr std::size_t kMostNeighbours = 6;  // that a seed looks at
constexpr std::size_t kMostRows = 3;        // with long borders that it looks across
constexpr std::size_t kMostPatch = 150;     // strips of a patch that a seed is fitted with
constexpr double kSimilarWidth = 2.5;  // strips of a freeform face differ by this factor at most
constexpr std::size_t kLeastFreeform = 4;

constexpr SurfaceKind kSimple[]{SurfaceKind::Cylinder, SurfaceKind::Cone, SurfaceKind::Sphere};
constexpr SurfaceKind kAll[]{SurfaceKind::Cylinder, SurfaceKind::Cone, SurfaceKind::Sphere,
                             SurfaceKind::Torus};

/// How many times the area of a simpler surface another must hold to be better. A torus of a large
/// radius holds a straight rounding and beyond its ends a little of what follows there.
constexpr double clearly(SurfaceKind kind) {
    return kind == SurfaceKind::Torus ? 1.5 : 1.15;
}

class Finder {
public:
    explicit Finder(const Strips& strips)
        : strips_(strips), regionOf_(strips.count(), kNoRegion), grower_(strips, regionOf_) {}

    std::vector<Region> find() {
        // Surfaces with much to prove them come first, so that a few strips that happen to fit one
        // take nothing from them; then those of vertices that are not quite on their surface.
        search(8, 0.0);
        search(3, 0.0);
        search(8, kLoose);
        absorb();
        // What is left beside a surface has nothing better to be on: its corners may be off as far
        // as the facets themselves.
        for (Region& region : regions_) {
            const std::size_t before = region.strips.size();
            grower_.widen(region, std::max(strips_.rounding(), sagOf(region)));
            claim(region, before);
        }
        growFlat();
        addRest();
        addSlivers();
        return std::move(regions_);
    }

private:
    /// Of a facet's distance from the surface between its vertices: what the vertices may be off.
    static constexpr double kLoose = 0.25;

    void claim(const Region& region, std::size_t from) {
        const auto number = static_cast<std::uint32_t>(&region - regions_.data());
        for (std::size_t i = from; i < region.strips.size(); ++i)
            regionOf_[region.strips[i]] = number;
    }

    [[nodiscard]] double areaOf(const Region& region) const {
        double area = 0.0;
        for (const std::uint32_t strip : region.strips)
            area += strips_[strip].area;
        return area;
    }
    [[nodiscard]] double toleranceOf(const Region& region) const {
        return std::max(strips_.rounding(), kLoose * sagOf(region));
    }

    /// Small regions that a larger one beside them passes too become part of it.
    void absorb() {
        std::vector<std::uint32_t> order(regions_.size());
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t l, std::uint32_t r) {
            return regions_[l].strips.size() > regions_[r].strips.size();
        });
        for (const std::uint32_t number : order) {
            if (regions_[number].strips.empty()) continue;
            const double tolerance = toleranceOf(regions_[number]);
            for (const std::uint32_t other : around(number))
                if (regions_[other].strips.size() <= regions_[number].strips.size() &&
                    grower_.holds(regions_[number], tolerance, regions_[other].strips)) {
                    std::vector<std::uint32_t>& to = regions_[number].strips;
                    std::vector<std::uint32_t>& from = regions_[other].strips;
                    const std::size_t before = to.size();
                    to.insert(to.end(), from.begin(), from.end());
                    from.clear();
                    claim(regions_[number], before);
                }
        }
        dropEmpty();
    }
    [[nodiscard]] std::set<std::uint32_t> around(std::uint32_t number) const {
        std::set<std::uint32_t> found;
        for (const std::uint32_t strip : regions_[number].strips)
            for (const Neighbour& next : strips_.neighboursOf(strip))
                if (next.angle <= kSmoothAngle && !grower_.isFree(next.strip) &&
                    regionOf_[next.strip] != number)
                    found.insert(regionOf_[next.strip]);
        return found;
    }
    void dropEmpty() {
        std::erase_if(regions_, [](const Region& region) { return region.strips.empty(); });
        for (const Region& region : regions_)
            claim(region, 0);
    }

    void search(std::size_t leastStrips, double loose) {
        std::size_t failures = 0;
        for (std::uint32_t seed = 0; seed < strips_.count(); seed += 1 + stride(failures)) {
            if (!grower_.isFree(seed) || strips_.isSliver(seed)) continue;
            std::optional<Region> best = bestOf(seed, loose);
            // A loose surface passes a point by chance quite often.
            if (!best || best->strips.size() < leastStrips ||
                !grower_.isProven(*best, loose > 0.0 ? 3 : 1)) {
                ++failures;
                continue;
            }
            failures -= std::min(failures, best->strips.size());
            regions_.push_back(std::move(*best));
            claim(regions_.back(), 0);
        }
    }
    /// A freeform mesh has no surface to find; a look here and there tells, ever more seldom, which
    /// keeps a scan of a million facets to some thousands of looks. A surface that is found makes
    /// up for as many failures as it has strips: a small one may be there by chance.
    static std::uint32_t stride(std::size_t failures) {
        constexpr std::size_t kPatience = 100, kMostDoublings = 12;
        return (1U << std::min(failures / kPatience, kMostDoublings)) - 1U;
    }

    [[nodiscard]] std::vector<Neighbour> smoothAround(std::uint32_t strip) const {
        std::vector<Neighbour> found;
        for (const Neighbour& next : strips_.neighboursOf(strip))
            if (next.angle <= kSmoothAngle && grower_.isFree(next.strip) &&
                !strips_.isSliver(next.strip))
                found.push_back(next);
        std::stable_sort(found.begin(), found.end(), [](const Neighbour& l, const Neighbour& r) {
            return l.length > r.length;
        });
        if (found.size() > kMostNeighbours) found.resize(kMostNeighbours);
        return found;
    }

    /// How far the middle of a facet there is from the surface, about.
    [[nodiscard]] double sagAt(std::uint32_t seed, const std::vector<Neighbour>& around) const {
        double sag = 0.0;
        for (const Neighbour& next : around)
            sag = std::max(sag, distance(strips_[seed].centre, strips_[next.strip].centre) *
                                    radians(next.angle) / 8.0);
        return sag;
    }
    [[nodiscard]] double sagOf(const Region& region) const {
        double sag = 0.0;
        for (const std::uint32_t strip : region.strips)
            sag =
                std::max(sag, std::abs(offsetFrom(region.surface, strips_[strip].centre).distance));
        return sag;
    }

    /// The surface through the seed that holds most around it; a simple one if others hold little
    /// more.
    std::optional<Region> bestOf(std::uint32_t seed, double loose) {
        const std::vector<Neighbour> around = smoothAround(seed);
        if (around.size() < 2) return std::nullopt;
        tolerance_ = std::max(strips_.rounding(), loose * sagAt(seed, around));
        best_.reset();
        for (std::size_t i = 1; i < around.size(); ++i)
            for (std::size_t k = 0; k < i; ++k) {
                const std::uint32_t three[]{seed, around[k].strip, around[i].strip};
                if (!isHeld(three)) tryOn(three, kSimple);
            }
        tryRows(seed, around);
        tryPatches(seed, around);
        if (best_) simplify();
        return std::move(best_);
    }

    /// A few strips may tell of a sphere, which needs least points, or of a torus, which fits best
    /// what a file rounds: many of them may tell of something simpler.
    void simplify() {
        const Region found = *best_;
        std::vector<std::uint32_t> part = found.strips;
        if (part.size() > kMostPatch) part.resize(kMostPatch);
        for (const SurfaceKind kind : kSimple) {
            if (kind == found.surface.kind) return;
            std::optional<Region> region = grower_.grow(kind, part, tolerance_);
            if (!region || clearly(found.surface.kind) * areaOf(*region) < areaOf(found)) continue;
            best_ = std::move(region);
            return;
        }
    }

    [[nodiscard]] bool isHeld(std::span<const std::uint32_t> strips) const {
        return best_ && std::all_of(strips.begin(), strips.end(), [&](std::uint32_t strip) {
                   return std::find(best_->strips.begin(), best_->strips.end(), strip) !=
                          best_->strips.end();
               });
    }

    void tryOn(std::span<const std::uint32_t> strips, std::span<const SurfaceKind> kinds) {
        for (const SurfaceKind kind : kinds) {
            std::optional<Region> region = grower_.grow(kind, strips, tolerance_);
            if (!region) continue;
            if (!best_ || areaOf(*region) > clearly(kind) * areaOf(*best_))
                best_ = std::move(region);
        }
    }

    /// The last row of a surface has only one neighbour on it, whose other neighbours tell more.
    void tryRows(std::uint32_t seed, const std::vector<Neighbour>& around) {
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
    void tryPatches(std::uint32_t seed, const std::vector<Neighbour>& around) {
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

    /// The free strips around the middle whose normals are within the reach of its own; none if the
    /// seed is not among them.
    [[nodiscard]] std::vector<std::uint32_t> patchAround(std::uint32_t middle, std::uint32_t seed,
                                                         double reach) const {
        std::vector<std::uint32_t> patch{middle};
        bool holdsSeed = middle == seed;
        for (std::size_t i = 0; i < patch.size() && patch.size() < kMostPatch; ++i)
            for (const Neighbour& next : strips_.neighboursOf(patch[i])) {
                if (next.angle > kSmoothAngle || !grower_.isFree(next.strip) ||
                    strips_.isSliver(next.strip) ||
                    angleBetween(strips_[middle].normal, strips_[next.strip].normal) > reach ||
                    std::find(patch.begin(), patch.end(), next.strip) != patch.end())
                    continue;
                patch.push_back(next.strip);
                holdsSeed = holdsSeed || next.strip == seed;
            }
        if (!holdsSeed) patch.clear();
        return patch;
    }

    /// Strips that rounding keeps apart from the flat face that they are part of go to it.
    void growFlat() {
        std::vector<std::uint32_t> order;
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (grower_.isFree(strip) && !strips_.isSliver(strip)) order.push_back(strip);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t l, std::uint32_t r) {
            return strips_[l].area > strips_[r].area;
        });
        for (const std::uint32_t seed : order) {
            if (!grower_.isFree(seed)) continue;
            std::vector<std::uint32_t> flat{seed};
            claimFlat(seed, true);
            // More strips know the plane better.
            for (std::size_t known = 0; known < flat.size();) {
                known = flat.size();
                spreadFlat(planeOf(flat), flat);
            }
            for (const std::uint32_t strip : flat)
                claimFlat(strip, false);
            if (flat.size() > 1) add(flat, SurfaceKind::Plane);
        }
    }
    void claimFlat(std::uint32_t strip, bool taken) {
        regionOf_[strip] = taken ? kNoRegion - 1 : kNoRegion;
    }
    void spreadFlat(const Surface& plane, std::vector<std::uint32_t>& flat) {
        for (std::size_t i = 0; i < flat.size(); ++i)
            for (const Neighbour& next : strips_.neighboursOf(flat[i]))
                if (grower_.isFree(next.strip) && isInPlane(plane, next.strip)) {
                    claimFlat(next.strip, true);
                    flat.push_back(next.strip);
                }
    }
    [[nodiscard]] Surface planeOf(const std::vector<std::uint32_t>& strips) const {
        Surface plane{SurfaceKind::Plane, {}, {}};
        double area = 0.0;
        for (const std::uint32_t strip : strips) {
            plane.origin = plane.origin + strips_[strip].centre * strips_[strip].area;
            plane.axis = plane.axis + strips_[strip].normal * strips_[strip].area;
            area += strips_[strip].area;
        }
        plane.origin = area > 0.0 ? plane.origin * (1.0 / area) : strips_[strips[0]].centre;
        plane.axis = unit(plane.axis);
        return plane;
    }
    [[nodiscard]] bool isInPlane(const Surface& plane, std::uint32_t strip) const {
        const auto corners = strips_.verticesOf(strip);
        const bool in = std::all_of(corners.begin(), corners.end(), [&](std::uint32_t vertex) {
            const Vector& point = strips_.mesh().vertices[vertex];
            return std::abs(dot(point - plane.origin, plane.axis)) <= strips_.rounding();
        });
        const double slack = degrees(std::atan2(strips_.rounding(), strips_[strip].width));
        return in && (strips_.isSliver(strip) ||
                      angleBetween(plane.axis, strips_[strip].normal) <= 0.1 + 2.0 * slack);
    }

    /// What is on no round surface: flat faces, or freeform ones of strips of about one width.
    void addRest() {
        reading::Groups groups(strips_.count());
        const auto isRest = [&](std::uint32_t strip) {
            return grower_.isFree(strip) && !strips_.isSliver(strip);
        };
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip) {
            if (!isRest(strip)) continue;
            for (const Neighbour& next : strips_.neighboursOf(strip)) {
                const double ratio = strips_[strip].area / strips_[next.strip].area;
                if (isRest(next.strip) && next.angle <= kSmoothAngle && ratio < kSimilarWidth &&
                    ratio > 1.0 / kSimilarWidth)
                    groups.join(strip, next.strip);
            }
        }
        std::vector<std::uint32_t> groupOf;
        std::vector<std::vector<std::uint32_t>> members(groups.number(groupOf));
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (isRest(strip)) members[groupOf[strip]].push_back(strip);
        for (const std::vector<std::uint32_t>& group : members) {
            if (group.size() >= kLeastFreeform) {
                add(group, SurfaceKind::Other);
            } else {
                for (const std::uint32_t strip : group)
                    add({strip}, SurfaceKind::Plane);
            }
        }
    }

    /// Strips without a normal go to the region beside them that has the longest border to them.
    void addSlivers() {
        std::vector<std::uint32_t> open;
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (grower_.isFree(strip)) open.push_back(strip);
        std::size_t before = 0;
        do {
            before = open.size();
            std::erase_if(open, [&](std::uint32_t strip) { return takesSliver(strip); });
        } while (open.size() < before);
        for (const std::uint32_t strip : open)
            add({strip}, SurfaceKind::Plane);
    }
    bool takesSliver(std::uint32_t strip) {
        double longest = 0.0;
        std::uint32_t region = kNoRegion;
        for (const Neighbour& next : strips_.neighboursOf(strip))
            if (!grower_.isFree(next.strip) && next.length > longest) {
                longest = next.length;
                region = regionOf_[next.strip];
            }
        if (region == kNoRegion) return false;
        regionOf_[strip] = region;
        regions_[region].strips.push_back(strip);
        return true;
    }

    void add(std::vector<std::uint32_t> strips, SurfaceKind kind) {
        Region region;
        if (kind == SurfaceKind::Plane) region.surface = planeOf(strips);
        region.strips = std::move(strips);
        regions_.push_back(std::move(region));
        claim(regions_.back(), 0);
    }

    const Strips& strips_;
    std::vector<std::uint32_t> regionOf_;
    Grower grower_;
    double tolerance_ = 0.0;
    std::optional<Region> best_;
    std::vector<Region> regions_;
};

}  // namespace

std::vector<Region> findRegions(const Strips& strips) {
    return Finder(strips).find();
}

}  // namespace corvane::part::facets
