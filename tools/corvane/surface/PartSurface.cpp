#include "surface/PartSurface.h"

#include <corvane/base/ModuleExport.h>
#include <corvane/part/Part.h>

#include "results/Geometry.h"

namespace {

/// More make a page that browsers do not like to open.
constexpr std::size_t kMostTriangles = 400000;

results::Geometry geometryOf(const corvane::part::Mesh& mesh) {
    std::vector<float> positions;
    positions.reserve(mesh.vertices.size() * 3);
    for (const corvane::part::Vector& vertex : mesh.vertices)
        for (const double coordinate : {vertex.x, vertex.y, vertex.z})
            positions.push_back(static_cast<float>(coordinate));
    std::vector<std::uint32_t> indices;
    indices.reserve(mesh.triangles.size() * 3);
    for (const auto& triangle : mesh.triangles)
        indices.insert(indices.end(), triangle.begin(), triangle.end());
    const std::vector<std::uint32_t> faces(mesh.faces.begin(), mesh.faces.end());
    return results::encodeGeometry(positions, indices, faces);
}

}  // namespace

CORVANE_MODULE_EXPORT bool corvanePartSurface(const char* path, const char* units,
                                              results::Geometry& geometry) {
    const corvane::part::OpenResult opened = corvane::part::Part::open(path, units);
    if (!opened.part) return false;
    const corvane::part::Mesh& mesh = opened.part->mesh();
    if (mesh.triangles.empty() || mesh.triangles.size() > kMostTriangles) return false;
    geometry = geometryOf(mesh);
    return true;
}
