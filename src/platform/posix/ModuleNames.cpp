#include "platform/posix/ModuleNames.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <tuple>

#include "platform/Unicode.h"

namespace corvane::platform {
namespace {

constexpr std::string_view kWindowsEnding = ".dll";
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

// What may follow the ending: nothing, or a version such as ".0.1".
bool isVersion(std::string_view text) {
    return text.empty() ||
           (text.front() == '.' && text.find_first_not_of(".0123456789") == text.npos);
}

// How well a file fits, smaller is better; nothing when it does not.
using Rank = std::tuple<std::size_t, bool, bool, std::string>;

std::optional<Rank> rankOf(const std::string& file, const std::vector<std::string>& candidates) {
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const std::string& wanted = candidates[i];
        if (file.size() < wanted.size()) continue;
        const std::string_view head = std::string_view(file).substr(0, wanted.size());
        const std::string_view rest = std::string_view(file).substr(wanted.size());
        const bool versioned = !rest.empty();
        if (versioned && (!endsIn(wanted, kEnding) || !isVersion(rest))) continue;
        if (folded(head) == folded(wanted)) return Rank(i, versioned, head != wanted, file);
    }
    return std::nullopt;
}

bool isRegularFile(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::vector<std::string> moduleFileNames(std::string_view name) {
    if (name.empty()) return {};
    std::string_view stem = name;
    if (endsIn(name, kWindowsEnding)) {
        stem.remove_suffix(kWindowsEnding.size());
    } else if (endsIn(name, kEnding)) {
        stem.remove_suffix(kEnding.size());
    }
    const std::string own(stem);
    return {own + std::string(kEnding), "lib" + own + std::string(kEnding), std::string(name)};
}

std::optional<std::string> findModuleInFolder(const std::string& folder, std::string_view name) {
    const std::vector<std::string> candidates = moduleFileNames(name);
    if (candidates.empty()) return std::nullopt;
    const std::string prefix = folder + '/';
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(prefix.c_str()), ::closedir);
    if (!stream) return std::nullopt;
    std::optional<Rank> best;
    while (const dirent* entry = ::readdir(stream.get())) {
        std::optional<Rank> rank = rankOf(entry->d_name, candidates);
        if (rank && (!best || *rank < *best) && isRegularFile(prefix + entry->d_name))
            best = std::move(rank);
    }
    if (!best) return std::nullopt;
    return prefix + std::get<std::string>(*best);
}

}  // namespace corvane::platform
