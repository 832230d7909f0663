#include "app/HelpFiles.h"

#include <algorithm>
#include <string>

#include "system/Files.h"
#include "system/Unicode.h"

namespace corvane::app {
namespace {

constexpr char16_t kByteOrderMark = u'\uFEFF';

}  // namespace

std::optional<std::u16string> readHelpFile(std::u16string_view path) {
    const std::optional<std::string> bytes = system::readFile(path, kLargestHelpFile);
    if (!bytes) return std::nullopt;
    std::u16string text = system::widen(*bytes);
    if (text.starts_with(kByteOrderMark)) text.erase(0, 1);
    return text;
}

std::optional<CStringW> restOfLine(std::u16string_view text, std::u16string_view sought,
                                   std::u16string_view mark) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        const std::u16string_view line = text.substr(0, end);
        if (line.find(sought) != line.npos) {
            CStringW rest(line);
            rest.Replace(sought, u"");
            rest.Replace(mark, u"");
            return rest.Trim();
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::nullopt;
}

}  // namespace corvane::app
