#include "run/FileList.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "Pattern.h"
#include "language/Messages.h"

namespace {

namespace fs = std::filesystem;

/// Lists that name each other must end.
constexpr int kDeepestList = 16;

class Expansion {
public:
    explicit Expansion(std::span<const std::string_view> endings) : endings_(endings) {}

    void add(const std::string& argument, int depth = 0) {
        std::error_code status;
        if (argument.starts_with('@') && !fs::exists(argument, status))
            addList(argument.substr(1), depth);
        else if (fs::is_directory(argument, status))
            addFolder(argument);
        else if (isPattern(argument) && !fs::exists(argument, status))
            addPattern(argument);
        else
            addNamed(argument);
    }

    FileList list;

private:
    static std::string plain(const std::string& file) {
        return fs::path(file).lexically_normal().string();
    }

    void addFile(const std::string& file) {
        if (seen_.insert(plain(file)).second) list.files.push_back(file);
    }

    /// One that stands for itself. That folders and patterns overlap is nothing unusual.
    void addNamed(const std::string& file) {
        if (++named_[plain(file)] == 2)
            list.notes.push_back(trUtf8("{0} is named more than once and counts once", file));
        addFile(file);
    }

    void addList(const std::string& name, int depth) {
        std::ifstream file(name);
        std::error_code status;
        if (!file || fs::is_directory(name, status) || depth == kDeepestList) {
            list.problems.push_back(depth == kDeepestList
                                        ? trUtf8("{0}: this list of files leads to itself", name)
                                        : trUtf8("{0}: this list of files cannot be read", name));
            return;
        }
        for (std::string line; std::getline(file, line);) {
            while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
                line.pop_back();
            if (!line.empty() && line.front() != '#') add(line, depth + 1);
        }
    }

    bool hasEnding(const fs::path& path) const {
        std::string ending = path.extension().string();
        std::ranges::transform(ending, ending.begin(), [](char unit) {
            return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit + 32) : unit;
        });
        return std::ranges::find(endings_, ending) != endings_.end();
    }

    /// The files in a folder and below it that the test takes, by name.
    template <typename Takes>
    std::size_t addBelow(const fs::path& folder, Takes takes) {
        std::vector<std::string> found;
        std::error_code status;
        fs::recursive_directory_iterator entry(folder.empty() ? fs::path(".") : folder,
                                               fs::directory_options::skip_permission_denied,
                                               status);
        for (; !status && entry != fs::recursive_directory_iterator(); entry.increment(status)) {
            const fs::path path =
                folder.empty() ? entry->path().lexically_relative(".") : entry->path();
            std::error_code ignored;
            if (entry->is_regular_file(ignored) && takes(path)) found.push_back(path.string());
        }
        std::ranges::sort(found);
        for (const std::string& file : found)
            addFile(file);
        return found.size();
    }

    void addFolder(const std::string& folder) {
        const auto takes = [this](const fs::path& path) { return hasEnding(path); };
        if (addBelow(folder, takes) == 0)
            list.problems.push_back(trUtf8("{0}: this folder holds no file of that kind", folder));
    }

    void addPattern(const std::string& pattern) {
        // Only what lies below the last folder without a sign can fit.
        const std::size_t sign = pattern.find_first_of("*?");
        const std::size_t slash = pattern.rfind('/', sign);
        const fs::path folder = slash == std::string::npos ? fs::path()
                                : slash == 0               ? fs::path("/")
                                                           : fs::path(pattern.substr(0, slash));
        const auto takes = [&](const fs::path& path) {
            return fitsPath(pattern, path.generic_string());
        };
        if (addBelow(folder, takes) == 0)
            list.problems.push_back(trUtf8("{0}: no file fits this pattern", pattern));
    }

    std::span<const std::string_view> endings_;
    std::set<std::string> seen_;
    std::map<std::string, int> named_;
};

}  // namespace

FileList expandFiles(std::span<const std::string> arguments,
                     std::span<const std::string_view> endings) {
    Expansion expansion(endings);
    for (const std::string& argument : arguments)
        expansion.add(argument);
    return std::move(expansion.list);
}
