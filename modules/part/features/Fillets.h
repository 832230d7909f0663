#pragma once

#include <vector>

#include "corvane/part/Features.h"

#include "Topology.h"

namespace corvane::part::features {

struct Fillets {
    std::vector<Fillet> all;
    std::vector<double> radiusOf;  ///< by face number less 1; 0 for faces that are no rounding; the
                                   ///< smallest one where it changes

    std::vector<bool> concaveOf;  ///< of a freeform corner as of its neighbours

    [[nodiscard]] bool concave(int face) const {
        return concaveOf[static_cast<std::size_t>(face - 1)];
    }
    [[nodiscard]] double radius(int face) const {
        return radiusOf[static_cast<std::size_t>(face - 1)];
    }
};

Fillets findFillets(const Topology& topology);

}  // namespace corvane::part::features
