#pragma once

#include <fstream>
#include <string>

namespace results {

/// A file that is replaced as a whole: what is written goes to a file beside it, which takes its
/// place in the end. Until then, and for ever when the process is killed, the old one stays.
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
    std::string path_;
    std::string temporary_;  ///< Empty for what is no plain file, such as a pipe.
    std::ofstream stream_;
};

}  // namespace results
