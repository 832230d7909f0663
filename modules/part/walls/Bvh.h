#pragma once

#include <cstdint>
#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part::walls {

/// A tree of boxes around triangles that answers what a ray meets first and which facet is nearest
/// to a point. Four boxes a node, side by side, so that the compiler tests them at once.
class Bvh {
public:
    struct Facet {
        float a[3], ab[3], ac[3];  // a corner and the sides from it, from the tree's centre
        float normal[3];           // unit, out of the material
        std::uint32_t triangle;    // number in the mesh
        int body;
    };

    static constexpr int kAnyBody = -1;

    /// Facets that count: those of a body with a cosine to a direction at most `limit`.
    struct Filter {
        Vector direction;
        double limit = 2.0;
        int body = kAnyBody;
        std::uint64_t* work = nullptr;  ///< grows by the boxes and facets that were looked at
    };

    struct Hit {
        double distance = -1.0;
        std::uint32_t triangle = 0;
        Vector point;
        explicit operator bool() const { return distance >= 0.0; }
    };

    Bvh() = default;
    /// Facets are given from `centre`.
    Bvh(std::vector<Facet> facets, const Vector& centre);

    [[nodiscard]] bool empty() const { return facets_.empty(); }

    /// The first facet along the unit vector `direction` between two distances, or with `any` the
    /// first that is found.
    [[nodiscard]] Hit ray(const Vector& origin, const Vector& direction, double from, double to,
                          const Filter& filter, bool any = false) const;
    /// The nearest point of the facets within `radius`.
    [[nodiscard]] Hit nearest(const Vector& point, double radius, const Filter& filter) const;

private:
    static constexpr std::size_t kWidth = 4;
    // Compilers keep arrays of four in single registers; this type holds them together.
    using Floats = float __attribute__((vector_size(16)));
    struct Node {
        Floats low[3], high[3];
        Floats least[3], greatest[3];  // components of normals
        std::uint32_t child[kWidth];   // a node, or the first facet of a leaf
        std::uint8_t count[kWidth];    // facets of a leaf; 0 for a node
        std::uint8_t children;
    };
    struct Pending {
        float distance;
        std::uint32_t child;
        std::uint32_t count;
    };
    class Builder;
    class Looks;

    template <typename Distance, typename Leaf>
    void visit(const Filter& filter, Distance distance, Leaf leaf, const double& most) const;

    std::vector<Facet> facets_;
    std::vector<Node> nodes_;
    Vector centre_;
};

}  // namespace corvane::part::walls
