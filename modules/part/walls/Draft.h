#pragma once

#include "corvane/part/Walls.h"

#include "Samples.h"

namespace corvane::part::walls {

/// `pull` is a unit vector.
Draft findDraft(const Skin& skin, const Vector& pull);

Vector findPullDirection(const Skin& skin);

/// `up` is a unit vector.
std::vector<Overhang> findOverhangs(const Skin& skin, const Vector& up, double limitAngle);

/// What of each face is hidden from both halves of a mould.
struct Hidden {
    std::vector<double> areas;  ///< by face number
    std::vector<Sample> samples;
    [[nodiscard]] bool isUndercut(const Face& face, double size) const;
};

std::vector<Undercut> findUndercuts(const Skin& skin, const Hidden& hidden, const Vector& pull);

}  // namespace corvane::part::walls
