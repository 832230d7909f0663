#pragma once

#include "Growth.h"

namespace corvane::part::facets {

/// Finds the surface that a strip is on from the strips around it.
class Seeds {
public:
    explicit Seeds(const Claims& claims)
        : claims_(claims), strips_(claims.strips()), grower_(claims) {}

    /// The surface through the seed that holds most around it, its vertices off by no more than
    /// rounding or the share `loose` of what the middles of facets are; a simple one if others hold
    /// little more. None if there is none, or if only chance explains it.
    std::optional<Region> bestOf(std::uint32_t seed, double loose);

    /// Whether so many smooth neighbours are free that a surface can be told.
    [[nodiscard]] bool canTell(std::uint32_t seed) const {
        return claims_.isOpen(seed) && smoothAround(seed).size() > 1;
    }

private:
    [[nodiscard]] std::vector<Neighbour> smoothAround(std::uint32_t strip) const;
    [[nodiscard]] double sagAt(std::uint32_t seed, const std::vector<Neighbour>& around) const;
    [[nodiscard]] bool isHeld(std::span<const std::uint32_t> strips) const;
    void tryOn(std::span<const std::uint32_t> strips, std::span<const SurfaceKind> kinds);
    void tryPairs(std::uint32_t seed, const std::vector<Neighbour>& around);
    void tryRows(std::uint32_t seed, const std::vector<Neighbour>& around);
    void tryPatches(std::uint32_t seed, const std::vector<Neighbour>& around);
    [[nodiscard]] std::vector<std::uint32_t> patchAround(std::uint32_t middle, std::uint32_t seed,
                                                         double reach) const;
    void simplify();

    const Claims& claims_;
    const Strips& strips_;
    Grower grower_;
    double tolerance_ = 0.0;
    std::optional<Region> best_;
};

}  // namespace corvane::part::facets
