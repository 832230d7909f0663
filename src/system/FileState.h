#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "system/Files.h"

namespace corvane::system {

/// One state of a file. What was made from the file is good as long as isCurrent says so. While the
/// stamp of the file proves nothing, its bytes are compared.
class FileState {
public:
    /// The state now. Make it before whatever reads the file, so that a change in between is seen
    /// later. A file above `limit` has no bytes to compare.
    explicit FileState(std::u16string_view path, std::size_t limit = kLargestFile);

    /// Whether that file is in this state still.
    bool isCurrent(std::u16string_view path);

    /// Whether the file was there.
    bool exists() const { return stamp_.exists(); }

private:
    std::u16string path_;
    std::size_t limit_;
    FileStamp stamp_;
    std::optional<std::string> bytes_;  // while the stamp alone proves nothing
};

}  // namespace corvane::system
