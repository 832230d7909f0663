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
        bool isEmpty = true;
        for (std::string line; std::getline(file, line);) {
            while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
                line.pop_back();
            if (line.empty() || line.front() == '#') continue;
            isEmpty = false;
            add(line, depth + 1);
        }
        if (isEmpty) list.problems.push_back(trUtf8("{0}: this list names no file", name));
    }

    bool hasEnding(const fs::path& path) const {
        std::string ending = path.extension().string();
        std::ranges::transform(ending, ending.begin(), [](char unit) {
            return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit + 32) : unit;
        });
        return std::ranges::find(endings_, ending) != endings_.end();
    }

    /// Finds the files in a folder and below it that `takes` takes, in those folders that `enters`
    /// takes. One that cannot be read may hide any of them.
    template <typename Takes, typename Enters>
    void findBelow(const fs::path& folder, Takes takes, Enters enters,
                   std::vector<std::string>& found) {
        std::error_code status;
        fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, status);
        for (; !status && entry != fs::directory_iterator(); entry.increment(status)) {
            const fs::path path = folder / entry->path().filename();
            std::error_code ignored;
            if (entry->is_regular_file(ignored) && takes(path)) found.push_back(path.string());
            const bool isFolder = entry->is_directory(ignored) && !entry->is_symlink(ignored);
            if (isFolder && enters(path)) findBelow(path, takes, enters, found);
        }
        if (status && status != std::errc::no_such_file_or_directory &&
            status != std::errc::not_a_directory)
            list.problems.push_back(trUtf8("{0}: cannot be read", folder.string()));
    }

    /// Adds what is found, by name; nothing at all is a problem when no other one explains it.
    template <typename Takes, typename Enters>
    void addBelow(const fs::path& folder, Takes takes, Enters enters, const std::string& none) {
        const std::size_t problems = list.problems.size();
        std::vector<std::string> found;
        findBelow(folder, takes, enters, found);
        std::ranges::sort(found);
        for (const std::string& file : found)
            addFile(file);
        if (found.empty() && list.problems.size() == problems) list.problems.push_back(none);
    }

    void addFolder(const std::string& folder) {
        addBelow(
            folder, [this](const fs::path& path) { return hasEnding(path); },
            [](const fs::path&) { return true; },
            trUtf8("{0}: this folder holds no file of that kind", folder));
    }

    void addPattern(const std::string& pattern) {
        // Only what lies below the last folder without a sign can fit.
        const std::size_t sign = pattern.find_first_of("*?");
        const std::size_t slash = pattern.rfind('/', sign);
        const fs::path folder = slash == std::string::npos ? fs::path()
                                : slash == 0               ? fs::path("/")
                                                           : fs::path(pattern.substr(0, slash));
        const bool isDeep = pattern.find("**") != std::string::npos;
        const auto depth = std::ranges::count(pattern, '/');
        addBelow(
            folder, [&](const fs::path& path) { return fitsPath(pattern, path.generic_string()); },
            [&](const fs::path& path) {
                return isDeep || std::ranges::count(path.generic_string(), '/') < depth;
            },
            trUtf8("{0}: no file fits this pattern", pattern));
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
