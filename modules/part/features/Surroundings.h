#pragma once

#include <array>
#include <vector>

#include "BoxTree.h"
#include "Topology.h"

namespace corvane::part::features {

/// A cylinder of space: from `origin` along the unit vector `axis`.
struct Bar {
    Vector origin, axis;
    double length = 0.0, radius = 0.0;
};

/// What is around a place of a solid, from the mesh.
class Surroundings {
public:
    Surroundings(const Topology& topology, const Mesh& mesh);

    /// How far a disc of the bar's radius moves from its origin along its axis until it meets a
    /// face; kNone if it meets none. Faces with their outside to the disc's front count, or with
    /// `leaving` those with their inside to it, which bound the material that the disc moves in.
    [[nodiscard]] double free(const Bar& bar, bool leaving, const std::vector<int>& except,
                              int solid) const;

    /// Least distance from the bar's side, at right angles to its axis, to a face that bounds the
    /// material around it; kNone if there is none.
    [[nodiscard]] double beside(const Bar& bar, const std::vector<int>& except, int solid) const;

private:
    struct View;
    /// The facets of one face.
    struct Patch {
        std::vector<std::uint32_t> triangles;
        BoxTree tree;
    };

    [[nodiscard]] bool counts(std::size_t face, const std::vector<int>& except, int solid) const;
    [[nodiscard]] double lowestOn(std::uint32_t triangle, const View& view, double radius,
                                  bool leaving, double start) const;
    [[nodiscard]] double leastOn(std::uint32_t triangle, const View& view, const Bar& bar) const;
    [[nodiscard]] std::array<Vector, 3> corners(std::uint32_t triangle) const;
    [[nodiscard]] double refined(int face, const Bar& bar, double outside) const;

    const Topology& topology_;
    const Mesh& mesh_;
    std::vector<Patch> patches_;  // by face number less 1
    BoxTree faces_;
    double tolerance_;
};

}  // namespace corvane::part::features
