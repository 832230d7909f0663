#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "Signals.h"

namespace results {

/// A file that is replaced as a whole: what is written goes to a file beside it, which takes its
/// place in the end. Until then, and for ever when the process is killed, the old one stays. A link
/// is followed, and the file keeps who may read and write it; one that may not be written is not
/// replaced either.
class OutputFile {
public:
    explicit OutputFile(std::string path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    std::ostream& stream() { return stream_; }
    bool isOpen() const { return stream_.is_open(); }
    const std::string& path() const { return path_; }
    /// False when something could not be written; the old file stays.
    bool commit();

private:
    void open();

    std::string path_;
    std::filesystem::path place_;  ///< Without links.
    std::string temporary_;        ///< Empty for what is no plain file, such as a pipe.
    std::optional<Transient> transient_;
    std::ofstream stream_;
};

}  // namespace results
