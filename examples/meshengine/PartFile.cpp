#include "PartFile.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

#include "MeshReader.h"

namespace meshengine {
namespace {

namespace fs = std::filesystem;

// The coarsest step in which file systems keep times.
constexpr std::chrono::seconds kTimeStep{2};

struct FileState {
    std::string path;
    std::uintmax_t size = 0;
    fs::file_time_type written;

    bool operator==(const FileState&) const = default;
};

struct Kept {
    std::mutex mutex;
    FileState state;
    std::shared_ptr<const Mesh> mesh;
};

Kept& kept() {
    static Kept last;
    return last;
}

/// What tells whether a file has changed; nothing while that cannot be told.
std::optional<FileState> stateOf(const std::string& path) {
    const fs::path file{std::u8string(path.begin(), path.end())};
    std::error_code sizeStatus;
    std::error_code timeStatus;
    FileState state{path, fs::file_size(file, sizeStatus), fs::last_write_time(file, timeStatus)};
    if (sizeStatus || timeStatus) return std::nullopt;
    if (state.written > fs::file_time_type::clock::now() - kTimeStep) return std::nullopt;
    return state;
}

}  // namespace

std::shared_ptr<const Mesh> readPart(const std::string& path, std::string& error) {
    // Asked before the file is read: what is written after that has another time.
    std::optional<FileState> state = stateOf(path);
    Kept& last = kept();
    if (state) {
        const std::scoped_lock lock(last.mutex);
        if (last.mesh && last.state == *state) return last.mesh;
    }
    ReadResult result = readMesh(path);
    if (!result.mesh) {
        error = std::move(result.error);
        return nullptr;
    }
    auto mesh = std::make_shared<const Mesh>(std::move(*result.mesh));
    if (state) {
        const std::scoped_lock lock(last.mutex);
        last.state = std::move(*state);
        last.mesh = mesh;
    }
    return mesh;
}

}  // namespace meshengine
