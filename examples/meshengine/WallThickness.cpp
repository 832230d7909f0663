#include <cmath>
#include <limits>

#include "Bvh.h"
#include "Measures.h"

namespace meshengine {
namespace {

// Below this share of the part's size two facets touch, and no wall is between them.
constexpr double kTouching = 1e-9;

}  // namespace

std::optional<Wall> thinnestWall(const Mesh& mesh) {
    constexpr double none = std::numeric_limits<double>::infinity();
    const Bvh tree(mesh);
    const double touching = length(boundingSize(mesh)) * kTouching;
    Wall thinnest{none, {}, {}};
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const Vector normal = mesh.normal(i);
        const double size = length(normal);
        if (!(size > 0.0)) continue;
        const Ray inward{mesh.centre(i), normal * (-1.0 / size)};
        // What is farther than the thinnest wall so far is of no interest.
        const double way = tree.exitDistance(inward, i, touching, thinnest.thickness);
        if (way < thinnest.thickness)
            thinnest = {way, inward.origin, inward.origin + inward.direction * way};
    }
    return thinnest.thickness < none ? std::optional(thinnest) : std::nullopt;
}

}  // namespace meshengine
