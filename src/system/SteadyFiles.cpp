#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include <corvane/platform/SteadyFilesScope.h>

#include "system/Files.h"

namespace corvane::system {
namespace {

struct PathHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view path) const {
        return std::hash<std::u16string_view>()(path);
    }
};

}  // namespace

// The first look at each file. The paths are those of the configuration, so there are few.
class LooksAtFiles {
public:
    std::unordered_map<std::u16string, FileStamp, PathHash, std::equal_to<>> stamps;
};

namespace {

// Of the outermost scope of this thread.
thread_local LooksAtFiles* currentLooks = nullptr;

std::atomic<std::uint64_t> lastLook{0};

}  // namespace

FileStamp FileStamp::of(std::u16string_view path) {
    if (!currentLooks) return now(path);
    const auto known = currentLooks->stamps.find(path);
    if (known != currentLooks->stamps.end()) return known->second;
    FileStamp stamp = now(path);
    stamp.look_ = ++lastLook;
    currentLooks->stamps.emplace(path, stamp);
    return stamp;
}

}  // namespace corvane::system

namespace corvane {

SteadyFilesScope::SteadyFilesScope() {
    if (system::currentLooks) return;
    looks_ = std::make_unique<system::LooksAtFiles>();
    system::currentLooks = looks_.get();
}

SteadyFilesScope::~SteadyFilesScope() {
    if (looks_) system::currentLooks = nullptr;
}

}  // namespace corvane
