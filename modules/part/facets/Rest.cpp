#include "Rest.h"

#include <algorithm>
#include <cmath>

#include "../Vec.h"
#include "Growth.h"

namespace corvane::part::facets {
namespace {

/// Times the rounding: what corners may be off that no round surface has. A plane that is told from
/// a few facets leads astray beyond them.
constexpr double kLeft = 4.0;
constexpr std::size_t kLeastFreeform = 4;

class Rest {
public:
    explicit Rest(Claims& claims)
        : claims_(claims), strips_(claims.strips()), seen_(strips_.count(), 0) {}

    void claim() {
        claimFlat();
        claimSmooth();
        claimSlivers();
    }

private:
    /// Strips that rounding keeps apart from the flat face that they are part of go to it.
    void claimFlat() {
        std::vector<std::uint32_t> order;
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (claims_.isOpen(strip)) order.push_back(strip);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t l, std::uint32_t r) {
            return strips_[l].area > strips_[r].area;
        });
        isSmooth_.assign(strips_.count(), false);
        for (const std::uint32_t seed : order) {
            if (!claims_.isFree(seed) || isSmooth_[seed]) continue;
            const std::vector<std::uint32_t> flat = flatAround(seed);
            if (flat.size() == 1) continue;
            // What a freeform face has flat spots of is left to it at once: each of its strips
            // would find the others again.
            if (onlyTouches(flat) || (flat.size() < kMany && claims_.goesOnAlike(flat, false)))
                for (const std::uint32_t strip : flat)
                    isSmooth_[strip] = true;
            else
                add(flat, SurfaceKind::Plane);
        }
    }

    /// The seed and what is in its plane around it.
    std::vector<std::uint32_t> flatAround(std::uint32_t seed) {
        std::vector<std::uint32_t> flat{seed};
        start(flat);
        // More strips know the plane better; a few more do not.
        for (std::size_t known = 0; flat.size() > known + known / 4;) {
            known = flat.size();
            const Surface plane = planeOf(flat);
            for (std::size_t i = 0; i < flat.size(); ++i)
                for (const Neighbour& next : strips_.neighboursOf(flat[i]))
                    if (isNew(next.strip) && !isSmooth_[next.strip] &&
                        isInPlane(plane, next.strip, kLeft * strips_.rounding()))
                        take(next.strip, flat);
        }
        return flat;
    }

    /// Whether the plane of the strips only touches a smooth surface: a little more tolerance lets
    /// it hold much more. Facets of one surface are about as large as each other, so that a few
    /// times as many tell.
    bool onlyTouches(const std::vector<std::uint32_t>& strips) {
        std::vector<std::uint32_t> held = strips;
        start(held);
        const Surface plane = planeOf(strips);
        std::size_t facets = 0;
        double area = 0.0;
        for (const std::uint32_t strip : strips) {
            facets += strips_.facetsOf(strip).size();
            area += strips_[strip].area;
        }
        const double much = kMuchMore * area;
        std::size_t looks = 6 * facets + 300;
        for (std::size_t i = 0; i < held.size(); ++i)
            for (const Neighbour& next : strips_.neighboursOf(held[i])) {
                if (looks-- == 0) return false;
                if (!isNew(next.strip) || next.angle > kSmoothAngle ||
                    !isInPlane(plane, next.strip, kWider * kLeft * strips_.rounding()))
                    continue;
                take(next.strip, held);
                area += strips_[next.strip].area;
                if (area > much) return true;
            }
        return false;
    }

    void start(const std::vector<std::uint32_t>& strips) {
        ++stamp_;
        for (const std::uint32_t strip : strips)
            seen_[strip] = stamp_;
    }
    [[nodiscard]] bool isNew(std::uint32_t strip) const {
        return seen_[strip] != stamp_ && claims_.isFree(strip);
    }
    void take(std::uint32_t strip, std::vector<std::uint32_t>& into) {
        seen_[strip] = stamp_;
        into.push_back(strip);
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
    [[nodiscard]] bool isInPlane(const Surface& plane, std::uint32_t strip,
                                 double tolerance) const {
        const double slack = degrees(std::atan2(tolerance, strips_[strip].width));
        if (!strips_.isSliver(strip) &&
            angleBetween(plane.axis, strips_[strip].normal) > 0.1 + 2.0 * slack)
            return false;
        return isNear(plane, strip, tolerance);
    }
    [[nodiscard]] bool isNear(const Surface& plane, std::uint32_t strip, double tolerance) const {
        const auto corners = strips_.verticesOf(strip);
        return std::all_of(corners.begin(), corners.end(), [&](std::uint32_t vertex) {
            const Vector& point = strips_.mesh().vertices[vertex];
            return std::abs(dot(point - plane.origin, plane.axis)) <= tolerance;
        });
    }

    /// What is on no round surface: flat faces, or freeform ones of strips of about one size.
    void claimSmooth() {
        reading::Groups groups(strips_.count());
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (claims_.isOpen(strip))
                for (const Neighbour& next : strips_.neighboursOf(strip))
                    if (strip < next.strip && claims_.isOpen(next.strip) &&
                        next.angle <= kSmoothAngle && goOn(strip, next.strip))
                        groups.join(strip, next.strip);
        std::vector<std::uint32_t> groupOf;
        std::vector<std::vector<std::uint32_t>> members(groups.number(groupOf));
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (claims_.isOpen(strip)) members[groupOf[strip]].push_back(strip);
        for (const std::vector<std::uint32_t>& group : members) {
            if (group.size() >= kLeastFreeform) {
                add(group, isFlat(group) ? SurfaceKind::Plane : SurfaceKind::Other);
            } else {
                for (const std::uint32_t strip : group)
                    add({strip}, SurfaceKind::Plane);
            }
        }
    }
    [[nodiscard]] bool isFlat(const std::vector<std::uint32_t>& strips) const {
        const Surface plane = planeOf(strips);
        return std::all_of(strips.begin(), strips.end(), [&](std::uint32_t strip) {
            return isNear(plane, strip, kLeft * strips_.rounding());
        });
    }
    /// Whether two strips that meet smoothly may be of one freeform face.
    bool goOn(std::uint32_t a, std::uint32_t b) {
        if (strips_[a].area < strips_[b].area) std::swap(a, b);
        return isAlike(strips_[a].area, strips_[b].area) || isSpot(a);
    }
    /// Whether the strip is a flat spot of a freeform face, or a facet among others of one.
    bool isSpot(std::uint32_t strip) {
        if (isSpot_.empty()) isSpot_.resize(strips_.count(), kUnknown);
        if (isSpot_[strip] == kUnknown)
            isSpot_[strip] = isInside(strip) || onlyTouches({strip}) ? kYes : kNo;
        return isSpot_[strip] == kYes;
    }
    /// Nobody means a flat face of a single facet that others go on from smoothly on all sides.
    [[nodiscard]] bool isInside(std::uint32_t strip) const {
        const auto around = strips_.neighboursOf(strip);
        return strips_.facetsOf(strip).size() == 1 && around.size() == 3 &&
               std::all_of(around.begin(), around.end(), [&](const Neighbour& next) {
                   return next.angle <= kSmoothAngle && claims_.isOpen(next.strip);
               });
    }

    /// Strips without a normal go to the region beside them that has the longest border to them,
    /// the next ones first.
    void claimSlivers() {
        std::vector<std::uint32_t> open;
        start(open);
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (isNew(strip) && besideOf(strip) != Claims::kNoRegion) take(strip, open);
        for (std::size_t i = 0; i < open.size(); ++i) {
            const std::uint32_t region = besideOf(open[i]);
            std::vector<std::uint32_t>& strips = claims_.regions()[region].strips;
            strips.push_back(open[i]);
            claims_.claim(region, strips.size() - 1);
            for (const Neighbour& next : strips_.neighboursOf(open[i]))
                if (isNew(next.strip)) take(next.strip, open);
        }
        for (std::uint32_t strip = 0; strip < strips_.count(); ++strip)
            if (claims_.isFree(strip)) add({strip}, SurfaceKind::Plane);
    }
    [[nodiscard]] std::uint32_t besideOf(std::uint32_t strip) const {
        double longest = -1.0;
        std::uint32_t region = Claims::kNoRegion;
        for (const Neighbour& next : strips_.neighboursOf(strip))
            if (!claims_.isFree(next.strip) && next.length > longest) {
                longest = next.length;
                region = claims_.of(next.strip);
            }
        return region;
    }

    void add(std::vector<std::uint32_t> strips, SurfaceKind kind) {
        Region region;
        if (kind == SurfaceKind::Plane) region.surface = planeOf(strips);
        region.strips = std::move(strips);
        claims_.add(std::move(region));
    }

    Claims& claims_;
    const Strips& strips_;
    std::vector<std::uint32_t> seen_;  // the number of the last walk that took the strip
    std::uint32_t stamp_ = 0;
    std::vector<bool> isSmooth_;  // strips of flat spots of freeform faces
    enum Known : std::uint8_t { kUnknown, kYes, kNo };
    std::vector<Known> isSpot_;
};

}  // namespace

void claimRest(Claims& claims) {
    Rest(claims).claim();
}

}  // namespace corvane::part::facets
