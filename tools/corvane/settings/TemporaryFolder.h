#pragma once

#include <filesystem>
#include <initializer_list>
#include <list>
#include <memory>

#include "Signals.h"

/// A folder that the user alone can read. Goes with its files when the object does, and also when a
/// signal ends the process and it has no other files than those that are named at its making.
class TemporaryFolder {
public:
    /// `files` are names of what it may hold later, files and folders. Null when none can be made.
    static std::shared_ptr<const TemporaryFolder> make(std::initializer_list<const char*> files);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

private:
    TemporaryFolder(std::filesystem::path path, std::initializer_list<const char*> files);

    std::filesystem::path path_;
    std::list<Transient> transients_;
};
