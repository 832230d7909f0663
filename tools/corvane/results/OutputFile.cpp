#include "results/OutputFile.h"

#include <atomic>
#include <filesystem>
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
    std::error_code status;
    const bool isSpecial = fs::exists(path_, status) && !fs::is_regular_file(path_, status);
    if (!isSpecial) temporary_ = temporaryName(path_);
    stream_.open(isSpecial ? path_ : temporary_, std::ios::binary);
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
    if (written) fs::rename(temporary_, path_, status);
    if (written && !status) return true;
    fs::remove(temporary_, status);
    return false;
}

}  // namespace results
