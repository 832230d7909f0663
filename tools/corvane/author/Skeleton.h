#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "language/Messages.h"

// What `corvane new` writes: the files of a small project that builds, runs and tests itself. They
// are in share/corvane/skeletons of the installation, with marks for what a name decides.
namespace skeleton {

/// One file: where it is in the skeletons, and where it goes in the new folder, with the same
/// marks.
struct File {
    const char* source;
    const char* target;
};

struct Kind {
    const char* name;
    Message description;
    std::span<const File> files;
    const char* next;  ///< What to type in the new folder.
};

std::span<const Kind> kinds();

/// What is wrong with a name; empty when nothing is. A name becomes one of files, targets, classes
/// and of globals in scripts.
std::string nameFault(const std::string& name);

/// Writes the files into a folder that is not there, or is empty. What is wrong; empty when all of
/// them are there. On failure nothing stays.
std::string write(const Kind& kind, const std::string& name, const std::filesystem::path& folder);

}  // namespace skeleton
