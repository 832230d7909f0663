#include "Directions.h"

#include <algorithm>

#include "Vec.h"

namespace corvane::part {

std::vector<Vector> directionsOf(const Model& model, std::size_t most) {
    std::vector<const Face*> flat;
    for (const Face& face : model.faces)
        if (face.surface.kind == SurfaceKind::Plane || face.surface.kind == SurfaceKind::Cylinder)
            flat.push_back(&face);
    std::stable_sort(flat.begin(), flat.end(),
                     [](const Face* l, const Face* r) { return l->area > r->area; });
    std::vector<Vector> directions{{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
    for (const Face* face : flat) {
        if (directions.size() >= most) break;
        const bool known = std::any_of(directions.begin(), directions.end(), [&](const Vector& d) {
            return angleBetweenLines(d, face->surface.axis) < 0.01;
        });
        if (!known) directions.push_back(face->surface.axis);
    }
    return directions;
}

}  // namespace corvane::part
