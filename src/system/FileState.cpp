#include "system/FileState.h"

namespace corvane::system {

FileState::FileState(std::u16string_view path, std::size_t limit)
    : path_(path), limit_(limit), stamp_(FileStamp::of(path_)) {
    if (!stamp_.proves(stamp_)) bytes_ = readFile(path_, limit_);
}

bool FileState::isCurrent(std::u16string_view path) {
    if (path != path_) return false;
    const auto now = FileStamp::of(path_);
    if (stamp_.proves(now)) return true;
    if (!bytes_ || readFile(path_, limit_) != bytes_) return false;
    stamp_ = now;
    if (stamp_.proves(stamp_)) bytes_.reset();
    return true;
}

}  // namespace corvane::system
