#include "run/HelpPage.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace {

constexpr std::uintmax_t kMostBytes = 65536;
/// The results of each rule hold its paragraphs.
constexpr std::size_t kMostLetters = 4096;

/// A paragraph on one line, without the marks of code.
std::string plain(std::string_view paragraph) {
    std::istringstream words{std::string(paragraph)};
    std::string text, word;
    while (words >> word) {
        std::erase(word, '`');
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string paragraphAfter(std::string_view page, std::string_view title) {
    const std::size_t start = page.find(title);
    if (start == std::string_view::npos) return {};
    page.remove_prefix(start + title.size());
    page = page.substr(0, page.find("\n\n"));
    return page.size() > kMostLetters ? std::string() : plain(page);
}

HelpPage read(const std::filesystem::path& file) {
    std::error_code status;
    if (!std::filesystem::is_regular_file(file, status) ||
        std::filesystem::file_size(file, status) > kMostBytes)
        return {};
    std::ifstream stream(file, std::ios::binary);
    std::string page = "\n";
    page.append(std::istreambuf_iterator<char>(stream), {});
    std::erase(page, '\r');
    return {paragraphAfter(page, "\n**Why.** "),
            paragraphAfter(page, "\n**How it is measured.** ")};
}

}  // namespace

const HelpPage& HelpPages::of(const std::filesystem::path& scriptFolder,
                              const std::filesystem::path& page) {
    const auto [entry, isNew] = known_.try_emplace(scriptFolder / page);
    if (isNew) {
        // A folder may be given as "." or with a separator at its end.
        std::error_code status;
        const auto folder =
            (std::filesystem::absolute(scriptFolder, status) / "").lexically_normal();
        entry->second = read(folder.parent_path().parent_path() / page);
    }
    return entry->second;
}
