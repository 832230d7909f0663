#include <bit>
#include <cstddef>
#include <cstdint>

#include "MeshReader.h"
#include "StlFormat.h"

namespace meshengine {
namespace {

// Layout: a free header, the triangle count, then for each triangle the normal, three corners and
// two bytes that no reader agrees on. Numbers are little endian.
constexpr std::size_t kCountOffset = 80;
constexpr std::size_t kFirstTriangle = 84;
constexpr std::size_t kTriangleBytes = 50;
constexpr std::size_t kNormalBytes = 12;
constexpr std::size_t kCornerBytes = 12;

std::uint32_t number(std::string_view bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return value;
}

double coordinate(std::string_view bytes, std::size_t offset) {
    static_assert(sizeof(float) == 4);
    return std::bit_cast<float>(number(bytes, offset));
}

}  // namespace

bool isBinaryStl(std::string_view bytes) {
    if (bytes.size() < kFirstTriangle) return false;
    const std::size_t triangles = (bytes.size() - kFirstTriangle) / kTriangleBytes;
    return (bytes.size() - kFirstTriangle) % kTriangleBytes == 0 &&
           number(bytes, kCountOffset) == triangles;
}

Corners parseBinaryStl(std::string_view bytes, std::string& error) {
    const std::size_t triangles = number(bytes, kCountOffset);
    if (triangles > kMaxTriangles) {
        error = "more than " + std::to_string(kMaxTriangles) + " triangles";
        return std::nullopt;
    }
    std::vector<Vector> corners;
    corners.reserve(triangles * 3);
    for (std::size_t triangle = 0; triangle < triangles; ++triangle) {
        std::size_t offset = kFirstTriangle + triangle * kTriangleBytes + kNormalBytes;
        for (int i = 0; i < 3; ++i, offset += kCornerBytes) {
            corners.push_back({coordinate(bytes, offset), coordinate(bytes, offset + 4),
                               coordinate(bytes, offset + 8)});
            if (usableCoordinates(corners.back())) continue;
            error = "triangle " + std::to_string(triangle + 1) + ": a coordinate is no number";
            return std::nullopt;
        }
    }
    return corners;
}

}  // namespace meshengine
