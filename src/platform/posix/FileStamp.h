#pragma once

#include <ctime>
#include <string_view>
#include <sys/types.h>

namespace corvane::platform {

/// What tells one state of a file from another without reading it.
class FileStamp {
public:
    /// The state of the file at a path now; that it is missing is a state too.
    static FileStamp of(std::u16string_view path);

    /// True when the file that had this stamp is sure to be unchanged under the other one. A file
    /// that was written right before it was stamped may change again within one tick of the file
    /// system's clock, so its stamp proves nothing.
    bool proves(const FileStamp& later) const;

private:
    bool exists_ = false;
    bool settled_ = true;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    off_t size_ = 0;
    timespec modified_{};
    timespec changed_{};
};

}  // namespace corvane::platform
