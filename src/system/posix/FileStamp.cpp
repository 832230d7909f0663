#include "system/FileStamp.h"

#include <ctime>
#include <sys/stat.h>

#include "system/posix/NativePath.h"

namespace corvane::system {
namespace {

// Coarser than the clock of any local file system.
constexpr time_t kSettlingSeconds = 2;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

FileStamp FileStamp::of(std::u16string_view path) {
    FileStamp stamp;
    struct stat status;
    stamp.exists_ = ::stat(nativePath(path).c_str(), &status) == 0;
    if (!stamp.exists_) return stamp;
    stamp.volume_ = status.st_dev;
    stamp.number_ = status.st_ino;
    stamp.size_ = status.st_size;
    stamp.modified_ = nanoseconds(status.st_mtim);
    stamp.changed_ = nanoseconds(status.st_ctim);
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    stamp.settled_ = now.tv_sec - status.st_ctim.tv_sec > kSettlingSeconds;
    return stamp;
}

bool FileStamp::proves(const FileStamp& later) const {
    return settled_ && exists_ == later.exists_ && volume_ == later.volume_ &&
           number_ == later.number_ && size_ == later.size_ && modified_ == later.modified_ &&
           changed_ == later.changed_;
}

}  // namespace corvane::system
