#include "results/OutputFile.h"

#include <atomic>
#include <random>

namespace results {

namespace {

namespace fs = std::filesystem;

/// A name that no other process and no other file of this one takes.
std::string temporaryName(const std::string& path) {
    static const unsigned process = std::random_device()();
    static std::atomic<unsigned> count = 0;
    return path + "." + std::to_string(process) + "-" + std::to_string(++count) + ".tmp";
}

}  // namespace

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
    open();
}

void OutputFile::open() {
    std::error_code status;
    const fs::file_status former = fs::status(path_, status);
    // Before links are followed: those of open pipes lead to no name.
    if (fs::exists(former) && !fs::is_regular_file(former))
        return stream_.open(path_, std::ios::binary);
    place_ = fs::weakly_canonical(path_, status);
    if (status || place_.empty()) return;
    // To replace it, the rights to its folder would be enough.
    if (fs::exists(former) && !std::ofstream(place_, std::ios::app)) return;
    temporary_ = temporaryName(place_.string());
    transient_.emplace(temporary_);
    stream_.open(temporary_, std::ios::binary);
    if (fs::exists(former)) fs::permissions(temporary_, former.permissions(), status);
}

OutputFile::~OutputFile() {
    if (!stream_.is_open() || temporary_.empty()) return;
    stream_.close();
    std::error_code ignored;
    fs::remove(temporary_, ignored);
}

bool OutputFile::commit() {
    if (!stream_.is_open()) return false;
    stream_.close();
    std::error_code status;
    const bool written = !stream_.fail();
    if (temporary_.empty()) return written;
    if (written) fs::rename(temporary_, place_, status);
    if (written && !status) return true;
    fs::remove(temporary_, status);
    return false;
}

}  // namespace results
