#include "Holes.h"

#include <algorithm>

namespace corvane::part::features {

Holes findHoles(const Model& model, const Mesh& mesh) {
    Holes found;
    const Topology topology(model);
    if (!topology.usable()) return found;
    const Axes axes(topology);
    const Surroundings around(topology, mesh);
    for (const HoleGroup& group : groupRoundFaces(topology, axes))
        if (std::optional<Hole> hole = shapeHole(topology, around, group))
            found.holes.push_back(std::move(*hole));
    std::stable_sort(found.holes.begin(), found.holes.end(), [](const Hole& l, const Hole& r) {
        return l.faces.front() < r.faces.front();
    });
    for (std::size_t i = 0; i < found.holes.size(); ++i)
        found.holes[i].number = static_cast<int>(i) + 1;
    measureHoles(topology, around, found.holes);
    found.patterns = findPatterns(topology, axes, found.holes);
    return found;
}

}  // namespace corvane::part::features
