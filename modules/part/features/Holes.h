#pragma once

#include <optional>
#include <vector>

#include "corvane/part/Features.h"

#include "HoleGroups.h"
#include "Surroundings.h"

namespace corvane::part::features {

/// A hole goes around its axis by more degrees than this: half, with room for a mesh's tolerance.
inline constexpr double kLeastTurn = 185.0;

/// Whether the face can be the wall of a hole: a concave cylinder or cone.
bool isHoleWall(const Topology& topology, int face);

/// The hole that the faces make, without number and neighbours; none if they make no hole.
std::optional<Hole> shapeHole(const Topology& topology, const Surroundings& around,
                              const HoleGroup& group);

struct Holes {
    std::vector<Hole> holes;
    std::vector<HolePattern> patterns;
};
Holes findHoles(const Model& model, const Mesh& mesh);

/// Fills in how far the holes are from edges, faces and each other.
void measureHoles(const Topology& topology, const Surroundings& around, std::vector<Hole>& holes);

/// Finds the patterns and writes their numbers into the holes.
std::vector<HolePattern> findPatterns(const Topology& topology, const Axes& axes,
                                      std::vector<Hole>& holes);

}  // namespace corvane::part::features
