#pragma once

#include <optional>
#include <vector>

#include "Fillets.h"

namespace corvane::part::features {

struct Corners {
    std::vector<Fillet> fillets;
    std::vector<SharpCorner> sharp;
    std::vector<Pocket> pockets;
};
Corners findCorners(const Model& model, const std::vector<Hole>& holes);

/// The faces of a pocket before it is measured.
struct PocketBody {
    int floor = 0;               ///< a face of the floor; 0 for none
    Vector up;                   ///< unit, out of the pocket
    std::vector<int> floors;     ///< the floor's faces, sorted
    std::vector<int> walls;      ///< sorted
    std::vector<int> roundings;  ///< between floor and walls, sorted
    bool open = false;
    bool squareFloor = false;  ///< a wall meets the floor without a rounding
};

/// Sizes of the pocket; none if it is no pocket.
std::optional<Pocket> measurePocket(const Topology& topology, const Fillets& fillets,
                                    const PocketBody& body);

}  // namespace corvane::part::features
