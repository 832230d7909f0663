#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "../reading/MeshTopology.h"

/// Finds the surfaces that the facets of a mesh stand for.
namespace corvane::part::facets {

using reading::MeshTopology;

/// Facets in one plane that lie edge to edge: one flat face, or one step of a curved one.
struct Strip {
    Vector centre, normal;
    double area = 0.0;
    double width = 0.0;  ///< the least one; what is no wider than rounding has no normal of its own
    std::uint32_t facets = 0, vertices = 0, neighbours = 0;  ///< where its own begin
};

/// Where two strips meet.
struct Neighbour {
    std::uint32_t strip = 0;
    double length = 0.0;  ///< of the border
    double angle = 0.0;   ///< between the normals
};

inline constexpr std::uint32_t kNoFacet = 0xffffffffU;

/// A list for each strip, one after the other.
template <typename T>
std::span<const T> listOf(const std::vector<T>& all, std::uint32_t from, std::uint32_t to) {
    return std::span<const T>(all).subspan(from, to - from);
}

/// The strips of a mesh, each facet in one, and how they meet.
class Strips {
public:
    /// The file holds the vertices to within `precision`.
    Strips(const Mesh& mesh, const MeshTopology& topology, double precision);

    [[nodiscard]] const Mesh& mesh() const { return mesh_; }
    /// How far a vertex can be from its surface only because a file rounds its coordinates.
    [[nodiscard]] double rounding() const { return rounding_; }
    [[nodiscard]] std::uint32_t count() const {
        return static_cast<std::uint32_t>(strips_.size() - 1);
    }
    [[nodiscard]] const Strip& operator[](std::uint32_t strip) const { return strips_[strip]; }
    [[nodiscard]] std::uint32_t of(std::size_t facet) const { return stripOf_[facet]; }
    /// The facets across the three sides of the facet; kNoFacet where there is not just one.
    [[nodiscard]] const std::array<std::uint32_t, 3>& across(std::uint32_t facet) const {
        return across_[facet];
    }
    [[nodiscard]] std::span<const std::uint32_t> facetsOf(std::uint32_t strip) const {
        return listOf(facets_, strips_[strip].facets, strips_[strip + 1].facets);
    }
    [[nodiscard]] std::span<const std::uint32_t> verticesOf(std::uint32_t strip) const {
        return listOf(vertices_, strips_[strip].vertices, strips_[strip + 1].vertices);
    }
    [[nodiscard]] std::span<const Neighbour> neighboursOf(std::uint32_t strip) const {
        return listOf(neighbours_, strips_[strip].neighbours, strips_[strip + 1].neighbours);
    }
    /// Whether the strip is too narrow to have a normal.
    [[nodiscard]] bool isSliver(std::uint32_t strip) const {
        return strips_[strip].width <= 4.0 * rounding_;
    }

private:
    struct Plane {
        Vector origin, normal;
    };
    [[nodiscard]] bool isIn(const Plane& plane, std::uint32_t facet) const;
    void findAcross();
    void grow(std::uint32_t seed);
    [[nodiscard]] Vector middleOf(std::uint32_t facet) const;
    [[nodiscard]] Plane planeOf(std::size_t first) const;
    void describe(Strip& strip);
    void meet();

    const Mesh& mesh_;
    const MeshTopology& topology_;
    double rounding_ = 0.0;
    std::vector<std::array<std::uint32_t, 3>> across_;
    std::vector<std::uint32_t> stripOf_;
    std::vector<Strip> strips_;  // and one more, where the lists of the last one end
    std::vector<std::uint32_t> facets_, vertices_;
    std::vector<Neighbour> neighbours_;
};

}  // namespace corvane::part::facets
