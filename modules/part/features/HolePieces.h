#pragma once

#include <vector>

#include "corvane/part/Features.h"

#include "HoleGroups.h"

namespace corvane::part::features {

/// One surface of a hole, on as many faces as it has; places are along the hole's axis.
struct HolePiece {
    HoleSection::Kind kind = HoleSection::Kind::Cylinder;
    Surface surface;
    bool concave = true;
    double level = 0.0;  ///< place of the surface's origin
    double slope = 0.0;  ///< Cone: growth of the radius along the hole's axis
    Range range;
    std::vector<int> faces;

    [[nodiscard]] double radiusAt(double place) const;
    [[nodiscard]] double leastRadius() const;
};

std::vector<HolePiece> piecesOf(const Topology& topology, const std::vector<int>& faces,
                                const Vector& axis);

}  // namespace corvane::part::features
