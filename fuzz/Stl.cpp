// The bytes of an STL file. Its facets, written as a binary file, come back, and those of a binary
// file give the same part again.

#include <cstring>
#include <string>
#include <string_view>

#include "PartModel.h"

namespace {

using corvane::part::Mesh;
using corvane::part::Model;

void append(std::string& bytes, const void* data, std::size_t size) {
    bytes.append(static_cast<const char*>(data), size);
}

std::string binary(const Mesh& mesh) {
    std::string bytes(80, ' ');
    const auto count = static_cast<std::uint32_t>(mesh.triangles.size());
    append(bytes, &count, sizeof count);
    for (const auto& triangle : mesh.triangles) {
        bytes.append(12, '\0');
        for (const std::uint32_t corner : triangle) {
            const auto& v = mesh.vertices[corner];
            const float point[] = {static_cast<float>(v.x), static_cast<float>(v.y),
                                   static_cast<float>(v.z)};
            append(bytes, point, sizeof point);
        }
        bytes.append(2, '\0');
    }
    return bytes;
}

bool isBinary(std::string_view bytes) {
    constexpr std::size_t kHeader = 84, kFacet = 50;
    std::uint32_t count = 0;
    if (bytes.size() < kHeader) return false;
    std::memcpy(&count, bytes.data() + kHeader - sizeof count, sizeof count);
    return bytes.size() == kHeader + kFacet * std::size_t{count};
}

void requireSame(const Mesh& a, const Mesh& b) {
    fuzz::require(a.triangles == b.triangles, "facets come back");
    fuzz::require(a.vertices.size() == b.vertices.size(), "vertices come back");
    for (std::size_t i = 0; i < a.vertices.size(); ++i)
        fuzz::require(std::memcmp(&a.vertices[i], &b.vertices[i], sizeof a.vertices[i]) == 0,
                      "vertices stay in place");
}

double area(const Model& model) {
    double sum = 0;
    for (const auto& face : model.faces)
        sum += face.area;
    return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const std::string_view bytes = fuzz::textOf(data, size);
    const auto first = fuzz::readPart("file.stl", bytes);
    if (!first.shape || !first.model.isMesh) return 0;
    const Mesh mesh = first.shape->mesh(1.0);
    fuzz::require(mesh.faces.size() == mesh.triangles.size(), "a facet has a face");
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        for (const std::uint32_t corner : mesh.triangles[i])
            fuzz::require(corner < mesh.vertices.size(), "a facet has vertices of the mesh");
        fuzz::require(mesh.faces[i] > 0 &&
                          static_cast<std::size_t>(mesh.faces[i]) <= first.model.faces.size(),
                      "a facet has a face of the model");
    }
    const auto second = fuzz::readPart("again.stl", binary(mesh));
    fuzz::require(second.shape != nullptr, "facets that were read can be read again");
    requireSame(mesh, second.shape->mesh(1.0));
    // The digits of a text may tell less than the floats that are written for it, and so what one
    // face is.
    if (!isBinary(bytes)) return 0;
    fuzz::require(mesh.faces == second.shape->mesh(1.0).faces, "facets keep their faces");
    fuzz::require(area(first.model) == area(second.model), "the faces come back");
    fuzz::require(first.model.edges.size() == second.model.edges.size(), "the edges come back");
    return 0;
}
