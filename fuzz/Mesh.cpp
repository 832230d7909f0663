// The bytes of an STL file, read and measured.

#include <cmath>

#include "Fuzz.h"
#include "Measures.h"
#include "MeshReader.h"

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
    fuzz::require(std::isfinite(meshengine::surfaceArea(mesh)), "an area is finite");
    fuzz::require(meshengine::isClosed(mesh) == meshengine::enclosedVolume(mesh).has_value(),
                  "a closed mesh has a volume");
    const auto wall = meshengine::thinnestWall(mesh);
    fuzz::require(!wall || wall->thickness >= 0, "a wall has a thickness");
    return 0;
}
