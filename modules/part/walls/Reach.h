#pragma once

#include "Pace.h"
#include "Samples.h"

namespace corvane::part::walls {

/// Whether what forms a place of the surface can leave it in a straight line.
class Reach {
public:
    explicit Reach(const Skin& skin) : skin_(skin) {}

    /// Whether nothing is in the way from the sample along a unit direction.
    [[nodiscard]] bool isFree(const Sample& sample, const Vector& direction) const;

    /// Whether the next of many samples is worth its work.
    [[nodiscard]] bool isDue() { return pace_.isDue(); }

    /// Whether what was looked at so far has taken seconds.
    [[nodiscard]] bool isTired() const { return pace_.isTired(); }

    /// Whether neither half of a mould can form the place. An upright one may leave either way.
    [[nodiscard]] bool isHidden(const Sample& sample, const Vector& pull) const;

private:
    [[nodiscard]] bool isClear(const Sample& sample, const Vector& direction) const;

    const Skin& skin_;
    mutable Pace pace_;
};

}  // namespace corvane::part::walls
