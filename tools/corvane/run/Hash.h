#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// SHA-256 as 64 hexadecimal digits.
std::string hashOf(std::string_view bytes);

struct FileHash {
    std::string sha256;
    std::uint64_t size = 0;
};

/// Nothing when the file cannot be read to its end.
std::optional<FileHash> hashFile(const std::filesystem::path& path);

/// Hashes of files, each read once.
class FileHashes {
public:
    /// Empty for a file that cannot be read.
    const std::string& of(const std::filesystem::path& path);

private:
    std::map<std::filesystem::path, std::string> known_;
};
