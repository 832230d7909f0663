#include "MeshReader.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "StlFormat.h"

namespace meshengine {
namespace {

/// The bytes of a regular file of a bearable size, or nothing and the reason.
std::optional<std::string> readBytes(const std::filesystem::path& path, std::string& error) {
    std::error_code status;
    if (!std::filesystem::is_regular_file(path, status)) {
        error = std::filesystem::exists(path, status) ? "not a file" : "no such file";
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, status);
    if (status || size > kMaxFileBytes) {
        error = status ? "cannot be read" : "the file is too large";
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) {
        error = "cannot be read";
        return std::nullopt;
    }
    return bytes;
}

}  // namespace

bool usableCoordinates(const Vector& corner) {
    // A comparison with NaN is false, so this refuses it too.
    return std::abs(corner.x) <= kMaxCoordinate && std::abs(corner.y) <= kMaxCoordinate &&
           std::abs(corner.z) <= kMaxCoordinate;
}

ReadResult parseMesh(std::string_view bytes) {
    ReadResult result;
    Corners corners;
    if (isBinaryStl(bytes)) {
        corners = parseBinaryStl(bytes, result.error);
    } else if (bytes.find('\0') != std::string_view::npos) {
        result.error = "the length of the file does not fit its number of triangles";
    } else {
        corners = parseTextStl(bytes, result.error);
    }
    if (corners && corners->empty()) {
        result.error = "no triangles";
    } else if (corners) {
        result.mesh = weld(*corners);
    }
    return result;
}

ReadResult readMesh(const std::string& path) {
    ReadResult result;
    const std::filesystem::path file{std::u8string(path.begin(), path.end())};
    if (const auto bytes = readBytes(file, result.error)) result = parseMesh(*bytes);
    if (!result.mesh) result.error = path + ": " + result.error;
    return result;
}

}  // namespace meshengine
