#include "Holes.h"

#include <algorithm>
#include <cmath>

namespace corvane::part::features {
namespace {

/// Whether the sections of the main bore have the face.
bool inBore(const Hole& hole, int face) {
    return std::any_of(hole.sections.begin(), hole.sections.end(), [&](const HoleSection& section) {
        const double narrow = std::min(section.startDiameter, section.endDiameter);
        return std::abs(narrow - hole.diameter) <= 1e-6 * hole.diameter &&
               std::find(section.faces.begin(), section.faces.end(), face) != section.faces.end();
    });
}

void nameThreads(const Model& model, std::vector<Hole>& holes) {
    if (model.threads.empty()) return;
    std::vector<Hole*> holeOf(model.faces.size(), nullptr);
    for (Hole& hole : holes)
        for (const int face : hole.faces)
            holeOf[static_cast<std::size_t>(face - 1)] = &hole;
    for (const bool bore : {true, false})
        for (std::size_t i = 0; i < model.threads.size(); ++i)
            for (const int face : model.threads[i].faces) {
                Hole* hole = holeOf[static_cast<std::size_t>(face - 1)];
                if (hole != nullptr && hole->thread == 0 && (!bore || inBore(*hole, face)))
                    hole->thread = static_cast<int>(i) + 1;
            }
}

}  // namespace

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
    nameThreads(model, found.holes);
    measureHoles(topology, around, found.holes);
    found.patterns = findPatterns(topology, axes, found.holes);
    return found;
}

}  // namespace corvane::part::features
