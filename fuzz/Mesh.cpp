// The bytes of an STL file, read and measured.

#include <cmath>

#include "Fuzz.h"
#include "Measures.h"
#include "MeshReader.h"

namespace {

using meshengine::Mesh;
using meshengine::Vector;
using meshengine::Wall;

struct Figures {
    double area;
    std::optional<double> volume;
    std::optional<Wall> wall;
};

Figures measure(const Mesh& mesh) {
    return {meshengine::surfaceArea(mesh), meshengine::enclosedVolume(mesh),
            meshengine::thinnestWall(mesh)};
}

void requireWall(const Mesh& mesh, const Wall& wall) {
    const double size = meshengine::length(meshengine::boundingSize(mesh));
    fuzz::require(wall.thickness > 0 && wall.thickness <= size * (1 + 1e-6),
                  "a wall is no thicker than the part");
    const double way = meshengine::length(wall.to - wall.from);
    // The places are rounded where the part lies, which may be far away.
    const double place = meshengine::length(wall.from) + size;
    fuzz::require(std::abs(way - wall.thickness) <= 1e-9 * place,
                  "a wall is as thick as its places are apart");
    bool isCentre = false;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
        isCentre = isCentre || mesh.centre(i) == wall.from;
    fuzz::require(isCentre, "a wall begins at the centre of a facet");
}

/// Doubling is exact, as long as nothing leaves the range of numbers.
void requireDoubled(Mesh mesh, const Figures& figures) {
    for (const Vector& vertex : mesh.vertices)
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (const double size = std::abs(vertex[axis]);
                size != 0 && (size < 1e-30 || size > 1e30))
                return;
    for (Vector& vertex : mesh.vertices)
        vertex = vertex * 2.0;
    const Figures doubled = measure(mesh);
    fuzz::require(doubled.area == 4 * figures.area, "twice the size has four times the area");
    fuzz::require(
        doubled.volume == (figures.volume ? std::optional(8 * *figures.volume) : std::nullopt),
        "twice the size has eight times the volume");
    fuzz::require(doubled.wall.has_value() == figures.wall.has_value() &&
                      (!doubled.wall || doubled.wall->thickness == 2 * figures.wall->thickness),
                  "twice the size has a wall of twice the thickness");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const meshengine::ReadResult result = meshengine::parseMesh(fuzz::textOf(data, size));
    fuzz::require(result.mesh.has_value() == result.error.empty(),
                  "a file is read or told why not");
    if (!result.mesh || result.mesh->triangles.empty()) return 0;
    const meshengine::Mesh& mesh = *result.mesh;
    for (const auto& triangle : mesh.triangles)
        for (const std::uint32_t vertex : triangle)
            fuzz::require(vertex < mesh.vertices.size(), "a triangle has vertices of the mesh");
    const Figures figures = measure(mesh);
    fuzz::require(std::isfinite(figures.area) && figures.area >= 0, "a mesh has an area");
    fuzz::require(meshengine::isClosed(mesh) == figures.volume.has_value(),
                  "a closed mesh has a volume");
    if (figures.wall) requireWall(mesh, *figures.wall);
    requireDoubled(mesh, figures);
    return 0;
}
