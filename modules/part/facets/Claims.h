#pragma once

#include <algorithm>

#include "Regions.h"
#include "Strips.h"

namespace corvane::part::facets {

/// Strips that tell of a surface whatever is around them. A hole in a coarse mesh has sixteen of
/// them, and a rounding four.
inline constexpr std::size_t kMany = 8;

/// Strips of one freeform face have about one area, and meet at about one angle.
inline bool isAlike(double a, double b) {
    constexpr double kMost = 2.5;
    return a < kMost * b && b < kMost * a;
}

/// The regions that are found so far, and which of them each strip belongs to.
class Claims {
public:
    static constexpr std::uint32_t kNoRegion = 0xffffffffU;

    explicit Claims(const Strips& strips) : strips_(strips), regionOf_(strips.count(), kNoRegion) {}

    [[nodiscard]] const Strips& strips() const { return strips_; }
    [[nodiscard]] std::vector<Region>& regions() { return regions_; }
    [[nodiscard]] std::uint32_t of(std::uint32_t strip) const { return regionOf_[strip]; }
    [[nodiscard]] bool isFree(std::uint32_t strip) const { return regionOf_[strip] == kNoRegion; }
    /// Whether the strip is free and has a normal.
    [[nodiscard]] bool isOpen(std::uint32_t strip) const {
        return isFree(strip) && !strips_.isSliver(strip);
    }

    /// Whether open strips like these few go on smoothly from them along most of their border; with
    /// steps as between them if these are asked for.
    [[nodiscard]] bool goesOnAlike(const std::vector<std::uint32_t>& strips, bool inSteps) const;

    void add(Region region) {
        regions_.push_back(std::move(region));
        claim(static_cast<std::uint32_t>(regions_.size() - 1), 0);
    }
    /// The strips of the region from that one on are its own now.
    void claim(std::uint32_t region, std::size_t from) {
        const std::vector<std::uint32_t>& strips = regions_[region].strips;
        for (std::size_t i = from; i < strips.size(); ++i)
            regionOf_[strips[i]] = region;
    }
    void dropEmpty() {
        std::erase_if(regions_, [](const Region& region) { return region.strips.empty(); });
        for (std::uint32_t region = 0; region < regions_.size(); ++region)
            claim(region, 0);
    }

private:
    const Strips& strips_;
    std::vector<std::uint32_t> regionOf_;
    std::vector<Region> regions_;
};

}  // namespace corvane::part::facets
