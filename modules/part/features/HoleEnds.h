#pragma once

#include <vector>

#include "HolePieces.h"
#include "Surroundings.h"

namespace corvane::part::features {

/// A hole's axis with all its faces and pieces, before it has a direction.
struct HoleBody {
    Vector origin, axis;
    std::vector<HolePiece> pieces;
    std::vector<int> faces;  ///< sorted
    Range whole;
    int solid = 0;
};

/// How a hole ends on one side.
struct HoleEnd {
    bool open = false;
    double place = 0.0;                ///< along the axis
    double radius = 0.0;               ///< the widest there
    const HolePiece* piece = nullptr;  ///< the one that reaches it
    // Open: the face around it.
    int face = 0;
    bool square = false;
    double angle = 0.0, area = 0.0, free = 0.0;
    // Closed: what closes it; none for a tip.
    std::vector<int> floors;
    bool flat = false;
    bool core = false;  ///< a thick pin is in it: a ring groove
};

/// The end on the low (`side` -1) or the high side (1) of the body.
HoleEnd endOf(const Topology& topology, const Surroundings& around, const HoleBody& body,
              double side);

}  // namespace corvane::part::features
