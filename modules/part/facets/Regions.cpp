#include "Regions.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

#include "../Elementary.h"
#include "Patience.h"
#include "Rest.h"
#include "Seeds.h"

namespace corvane::part::facets {
namespace {

/// Of a facet's distance from the surface between its vertices: what the vertices may be off.
constexpr double kLoose = 0.25;
constexpr std::size_t kFew = 3;  // strips that a surface has at least

class Finder {
public:
    explicit Finder(const Strips& strips)
        : strips_(strips), claims_(strips), seeds_(claims_), grower_(claims_) {}

    std::vector<Region> find() {
        // Surfaces with much to prove them come first, so that a few strips that happen to fit one
        // take nothing from them; then those of vertices that are not quite on their surface.
        searchAll(0.0);
        for (const std::uint32_t seed : small_)
            if (std::optional<Region> best = seeds_.bestOf(seed, 0.0))
                if (best->strips.size() >= kFew) claims_.add(std::move(*best));
        searchAll(kLoose);
        absorb();
        widen();
        claimRest(claims_);
        return std::move(claims_.regions());
    }

private:
    /// Finds the surfaces of many strips, and where there are some of few.
    void searchAll(double loose) {
        Patience patience(strips_);
        for (std::uint32_t seed = 0; seed < strips_.count(); ++seed) {
            if (!seeds_.canTell(seed) || !patience.mayLook(seed)) continue;
            std::optional<Region> best = seeds_.bestOf(seed, loose);
            if (!best || best->strips.size() < kMany || isOneStrip(*best)) {
                if (best) small_.push_back(seed);
                patience.fail(seed);
                continue;
            }
            patience.find(seed, best->strips.size());
            claims_.add(std::move(*best));
        }
    }

    /// Whether a single strip is most of the region: a flat face whose corners happen to be on a
    /// surface with the first strips of those around it.
    [[nodiscard]] bool isOneStrip(const Region& region) const {
        return 2.0 * grower_.supportOf(region) < grower_.areaOf(region);
    }

    [[nodiscard]] double sagOf(const Region& region) const {
        double sag = 0.0;
        for (const std::uint32_t strip : region.strips)
            sag =
                std::max(sag, std::abs(offsetFrom(region.surface, strips_[strip].centre).distance));
        return sag;
    }

    /// Small regions that a larger one beside them passes too become part of it.
    void absorb() {
        std::vector<Region>& regions = claims_.regions();
        std::vector<std::uint32_t> order(regions.size());
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t l, std::uint32_t r) {
            return regions[l].strips.size() > regions[r].strips.size();
        });
        for (const std::uint32_t number : order)
            if (!regions[number].strips.empty()) absorbAround(number);
        claims_.dropEmpty();
    }
    void absorbAround(std::uint32_t number) {
        Region& region = claims_.regions()[number];
        const double tolerance = std::max(strips_.rounding(), kLoose * sagOf(region));
        Fit fit = grower_.fitOf(region, tolerance);
        for (const std::uint32_t other : around(number)) {
            Region& next = claims_.regions()[other];
            if (next.strips.size() > region.strips.size()) continue;
            if (passesAll(fit, next.strips)) {
                unite(region, number, next);
            } else if (grower_.joins(region, next, tolerance)) {
                unite(region, number, next);
                fit = grower_.fitOf(region, tolerance);
            }
        }
    }
    [[nodiscard]] bool passesAll(const Fit& fit, const std::vector<std::uint32_t>& strips) const {
        return std::all_of(strips.begin(), strips.end(),
                           [&](std::uint32_t strip) { return grower_.passes(fit, strip); });
    }
    void unite(Region& to, std::uint32_t number, Region& from) {
        const std::size_t before = to.strips.size();
        to.strips.insert(to.strips.end(), from.strips.begin(), from.strips.end());
        from.strips.clear();
        claims_.claim(number, before);
    }
    [[nodiscard]] std::set<std::uint32_t> around(std::uint32_t number) {
        std::set<std::uint32_t> found;
        for (const std::uint32_t strip : claims_.regions()[number].strips)
            for (const Neighbour& next : strips_.neighboursOf(strip))
                if (next.angle <= kSmoothAngle && !claims_.isFree(next.strip) &&
                    claims_.of(next.strip) != number)
                    found.insert(claims_.of(next.strip));
        return found;
    }

    /// What is left beside a surface has nothing better to be on: its corners may be off as far as
    /// the facets themselves, or as two surfaces that are tangent may together.
    void widen() {
        std::vector<Region>& regions = claims_.regions();
        for (std::uint32_t number = 0; number < regions.size(); ++number) {
            Region& region = regions[number];
            const std::size_t before = region.strips.size();
            grower_.widen(region, std::max(2.0 * strips_.rounding(), sagOf(region)));
            claims_.claim(number, before);
        }
    }

    const Strips& strips_;
    Claims claims_;
    Seeds seeds_;
    Grower grower_;
    std::vector<std::uint32_t> small_;  // seeds of surfaces of few strips
};

}  // namespace

std::vector<Region> findRegions(const Strips& strips) {
    return Finder(strips).find();
}

}  // namespace corvane::part::facets
