#pragma once

#include <cstdint>
#include <string_view>

namespace corvane::system {

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
    std::uint64_t volume_ = 0;
    std::uint64_t number_ = 0;
    std::int64_t size_ = 0;
    std::int64_t modified_ = 0;  // nanoseconds, by the file system's clock
    std::int64_t changed_ = 0;
};

}  // namespace corvane::system
