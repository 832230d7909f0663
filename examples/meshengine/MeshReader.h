#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Mesh.h"

namespace meshengine {

/// What a part may have at most. A file says how many triangles it holds before any of them is
/// there, and the measures stay finite only for coordinates of a sane size.
inline constexpr std::size_t kMaxTriangles = 5'000'000;
inline constexpr std::size_t kMaxFileBytes = std::size_t{1} << 30;
inline constexpr double kMaxCoordinate = 1e9;

/// A mesh, or why there is none.
struct ReadResult {
    std::optional<Mesh> mesh;
    std::string error;
};

/// Reads an STL file, text or binary. The path is UTF-8. The error names the path, and the line
/// where it knows one.
ReadResult readMesh(const std::string& path);

/// The same for the bytes of a file. Bytes whose length is exactly that of a binary file with the
/// number of triangles that it claims are binary, even when they begin with "solid".
ReadResult parseMesh(std::string_view bytes);

}  // namespace meshengine
