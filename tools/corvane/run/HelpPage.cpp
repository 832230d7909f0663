#include "run/HelpPage.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace {

constexpr std::uintmax_t kMostBytes = 65536;

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
    return plain(page.substr(0, page.find("\n\n")));
}

}  // namespace

HelpPage readHelpPage(const std::filesystem::path& file) {
    std::error_code status;
    if (!std::filesystem::is_regular_file(file, status) ||
        std::filesystem::file_size(file, status) > kMostBytes)
        return {};
    std::ifstream stream(file, std::ios::binary);
    std::string page(std::istreambuf_iterator<char>(stream), {});
    std::erase(page, '\r');
    return {paragraphAfter(page, "\n**Why.** "),
            paragraphAfter(page, "\n**How it is measured.** ")};
}
