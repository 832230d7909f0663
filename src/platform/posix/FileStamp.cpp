#include "platform/posix/FileStamp.h"

#include <sys/stat.h>

#include "platform/posix/NativePath.h"

namespace corvane::platform {
namespace {

// Coarser than the clock of any local file system.
constexpr time_t kSettlingSeconds = 2;

bool same(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

FileStamp FileStamp::of(std::u16string_view path) {
    FileStamp stamp;
    struct stat status;
    stamp.exists_ = ::stat(nativePath(path).c_str(), &status) == 0;
    if (!stamp.exists_) return stamp;
    stamp.device_ = status.st_dev;
    stamp.inode_ = status.st_ino;
    stamp.size_ = status.st_size;
    stamp.modified_ = status.st_mtim;
    stamp.changed_ = status.st_ctim;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    stamp.settled_ = now.tv_sec - status.st_ctim.tv_sec > kSettlingSeconds;
    return stamp;
}

bool FileStamp::proves(const FileStamp& later) const {
    return settled_ && exists_ == later.exists_ && device_ == later.device_ &&
           inode_ == later.inode_ && size_ == later.size_ && same(modified_, later.modified_) &&
           same(changed_, later.changed_);
}

}  // namespace corvane::platform
