#include "settings/TemporaryFolder.h"

#include <random>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

std::shared_ptr<const TemporaryFolder> TemporaryFolder::make(
    std::initializer_list<const char*> files) {
    constexpr int kMostTries = 100;
    std::error_code failed;
    const fs::path above = fs::temp_directory_path(failed);
    if (failed) return nullptr;
    std::random_device random;
    for (int i = 0; i < kMostTries; ++i) {
        const fs::path path = above / ("corvane-" + std::to_string(random()));
        // False for what is there already, which may be another's.
        if (!fs::create_directory(path, failed)) {
            if (failed) return nullptr;
            continue;
        }
        const std::shared_ptr<const TemporaryFolder> folder(new TemporaryFolder(path, files));
        fs::permissions(path, fs::perms::owner_all, failed);
        return failed ? nullptr : folder;
    }
    return nullptr;
}

TemporaryFolder::TemporaryFolder(fs::path path, std::initializer_list<const char*> files)
    : path_(std::move(path)) {
    for (const char* file : files)
        transients_.emplace_back((path_ / file).string());
    transients_.emplace_back(path_.string());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}
