#pragma once

#include <filesystem>
#include <memory>

/// A folder that the user alone can read. Goes with its files when the object does.
class TemporaryFolder {
public:
    /// Null when none can be made.
    static std::shared_ptr<const TemporaryFolder> make();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

private:
    explicit TemporaryFolder(std::filesystem::path path) : path_(std::move(path)) {}

    std::filesystem::path path_;
};
