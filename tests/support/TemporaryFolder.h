#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>
#include <string>
#include <string_view>

#include <corvane/text/CStringW.h>

/// A folder of a test's own, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_, ignored)) {
            if (entry.is_directory(ignored) && !entry.is_symlink(ignored))
                std::filesystem::permissions(entry, std::filesystem::perms::owner_all, ignored);
        }
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    std::string path(std::string_view name = {}) const {
        return name.empty() ? path_.string() : (path_ / name).string();
    }
    CStringW wide(std::string_view name = {}) const { return CStringW::FromUtf8(path(name)); }

    /// Writes a file, and makes the folders that it needs.
    void write(std::string_view name, std::string_view bytes) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string read(std::string_view name) const { return readFile(path_ / name); }
    static std::string readFile(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool exists(std::string_view name) const { return std::filesystem::exists(path_ / name); }

private:
    std::filesystem::path path_;
};
