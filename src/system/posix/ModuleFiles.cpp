#include "system/posix/ModuleFiles.h"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <link.h>
#include <memory>
#include <span>
#include <sys/stat.h>
#include <tuple>
#include <vector>

#include "system/Files.h"
#include "system/Paths.h"
#include "system/Unicode.h"

namespace corvane::system {

namespace {

constexpr std::string_view kNamedEnding = ".dll";
constexpr std::string_view kEnding = ".so";

// Case is ignored for ASCII as well as for what the names' bytes spell as UTF-8.
std::u16string folded(std::string_view text) {
    std::u16string units = fromUtf8(text);
    std::transform(units.begin(), units.end(), units.begin(), toLower);
    return units;
}

bool endsIn(std::string_view name, std::string_view ending) {
    return name.size() > ending.size() &&
           folded(name.substr(name.size() - ending.size())) == folded(ending);
}

// The name without what may follow the ending: a version such as ".0.1".
std::string_view withoutVersion(std::string_view file) {
    const std::string_view stem = file.substr(0, file.find_last_not_of(".0123456789") + 1);
    const bool versioned = file.substr(stem.size()).starts_with('.') && endsIn(stem, kEnding);
    return versioned ? stem : file;
}

// How well a file fits, smaller is better; nothing when it does not.
using Rank = std::tuple<std::size_t, bool, bool, std::string>;

std::optional<Rank> rankOf(const std::string& file, const std::vector<std::string>& candidates) {
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const std::string& wanted = candidates[i];
        for (const std::string_view name : {std::string_view(file), withoutVersion(file)}) {
            if (name.size() == wanted.size() && folded(name) == folded(wanted))
                return Rank(i, name.size() != file.size(), name != wanted, file);
        }
    }
    return std::nullopt;
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir((folder + '/').c_str()), ::closedir);
    while (const dirent* entry = stream ? ::readdir(stream.get()) : nullptr)
        names.emplace_back(entry->d_name);
    return names;
}

bool isRegularFile(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::vector<std::string> moduleFileNames(std::string_view name) {
    if (name.empty()) return {};
    std::string_view stem = name;
    if (endsIn(name, kNamedEnding)) {
        stem.remove_suffix(kNamedEnding.size());
    } else if (endsIn(name, kEnding)) {
        stem.remove_suffix(kEnding.size());
    }
    const std::string own(stem);
    return {own + std::string(kEnding), "lib" + own + std::string(kEnding), std::string(name)};
}

std::optional<std::string> findModuleInFolder(const std::string& folder, std::string_view name) {
    const std::vector<std::string> candidates = moduleFileNames(name);
    const std::string prefix = folder + '/';
    std::optional<Rank> best;
    for (const std::string& file : namesIn(folder)) {
        std::optional<Rank> rank = rankOf(file, candidates);
        if (rank && (!best || *rank < *best) && isRegularFile(prefix + file))
            best = std::move(rank);
    }
    if (!best) return std::nullopt;
    return prefix + std::get<std::string>(*best);
}

bool anyModuleInFolderFits(const std::string& folder, std::string_view pattern) {
    const std::vector<std::string> candidates = moduleFileNames(pattern);
    const std::string prefix = folder + '/';
    return std::ranges::any_of(namesIn(folder), [&](const std::string& file) {
        const std::u16string name = fromUtf8(withoutVersion(file));
        const auto fits = [&](const std::string& wanted) {
            return matchesPattern(name, fromUtf8(wanted));
        };
        return std::ranges::any_of(candidates, fits) && isRegularFile(prefix + file);
    });
}

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

template <typename Object>
std::span<char> bytesOf(Object* objects, std::size_t count = 1) {
    return {reinterpret_cast<char*>(objects), count * sizeof(Object)};
}

// True when the loader would go on to the program headers.
bool isForThisProcess(const Header& header) {
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == kOwnClass && header.e_phentsize == sizeof(Segment);
}

}  // namespace

std::optional<std::string> moduleFileFault(const std::string& path) {
    const std::unique_ptr<InputFile> file = InputFile::open(fromUtf8(path));
    if (!file) return path + ": no regular file, or not readable";
    Header header;
    if (!file->read(0, bytesOf(&header))) return path + ": too short for a module";
    if (!isForThisProcess(header)) return std::nullopt;
    std::vector<Segment> segments(header.e_phnum);
    if (!file->read(header.e_phoff, bytesOf(segments.data(), segments.size())))
        return path + ": cut off, its program headers are missing";
    const std::uint64_t size = file->size();
    const auto isOutside = [size](const Segment& segment) {
        return segment.p_type == PT_LOAD && segment.p_filesz > 0 &&
               (segment.p_offset > size || segment.p_filesz > size - segment.p_offset);
    };
    if (std::ranges::any_of(segments, isOutside))
        return path + ": cut off, shorter than its program headers say";
    return std::nullopt;
}

}  // namespace corvane::system
