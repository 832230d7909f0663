#pragma once

#include <algorithm>

#include "Regions.h"
#include "Strips.h"

namespace corvane::part::facets {

/// Which strips are worth a look. A freeform face has no surface to find: looks that fail make the
/// next ones there ever more seldom, which keeps a million facets to some thousands of looks. Faces
/// that meet at an edge do not learn from each other, so that a hole in a freeform face is found;
/// only very many that fail make all others wait too.
class Patience {
public:
    explicit Patience(const Strips& strips) {
        reading::Groups groups(strips.count());
        for (std::uint32_t strip = 0; strip < strips.count(); ++strip)
            for (const Neighbour& next : strips.neighboursOf(strip))
                if (next.angle <= kSmoothAngle) groups.join(strip, next.strip);
        smooth_.resize(groups.number(groupOf_));
    }

    bool mayLook(std::uint32_t strip) {
        std::uint32_t& own = smooth_[groupOf_[strip]].wait;
        std::uint32_t& wait = own > 0 ? own : wait_;
        if (wait == 0) return true;
        --wait;
        return false;
    }
    void fail(std::uint32_t strip) {
        Smooth& own = smooth_[groupOf_[strip]];
        own.wait = waitOf(++own.failures / kLooks);
        wait_ = waitOf(++failures_ / kAllLooks);
    }
    /// A surface makes up for as many failures as it has strips: a small one may be there by
    /// chance.
    void find(std::uint32_t strip, std::size_t strips) {
        Smooth& own = smooth_[groupOf_[strip]];
        own.failures -= std::min(own.failures, strips);
        failures_ -= std::min(failures_, strips);
    }

private:
    struct Smooth {
        std::size_t failures = 0;
        std::uint32_t wait = 0;
    };
    // A look takes half a millisecond. They trade time for the size of the faces that are found
    // though they are tangent to a freeform one.
    static constexpr std::size_t kLooks = 100, kAllLooks = 1000;
    static std::uint32_t waitOf(std::size_t doublings) {
        constexpr std::size_t kMost = 12;
        return (1U << std::min(doublings, kMost)) - 1U;
    }

    std::vector<std::uint32_t> groupOf_;
    std::vector<Smooth> smooth_;  // by group of strips that meet smoothly
    std::size_t failures_ = 0;    // of all groups
    std::uint32_t wait_ = 0;
};

}  // namespace corvane::part::facets
