#include "emulation/Profile.h"

#include <optional>

#include "system/Files.h"
#include "system/TextLines.h"
#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

namespace {

constexpr std::size_t kLargestProfile = std::size_t{16} << 20;

// The name of a section when the line is a heading; what follows its bracket is ignored.
std::optional<std::u16string_view> headingOf(std::u16string_view line) {
    const std::size_t end = line.rfind(u']');
    if (line.front() != u'[' || end == line.npos) return std::nullopt;
    return trimmed(line.substr(1, end - 1));
}

// The value of a key in the first section of the name. Keys before any heading belong to the
// section without a name.
std::u16string_view findValue(std::u16string_view text, std::u16string_view section,
                              std::u16string_view key) {
    TextLines lines(text);
    bool inSection = section.empty();
    while (const std::optional<std::u16string_view> line = lines.next()) {
        if (const std::optional<std::u16string_view> heading = headingOf(*line)) {
            if (inSection) break;
            inSection = compareNoCase(*heading, section) == 0;
            continue;
        }
        const std::size_t equals = line->find(u'=');
        if (!inSection || equals == line->npos) continue;
        if (compareNoCase(trimmed(line->substr(0, equals)), key) == 0)
            return trimmed(line->substr(equals + 1));
    }
    return {};
}

}  // namespace

std::u16string profileText(std::u16string_view section, std::u16string_view key,
                           std::u16string_view file, std::size_t capacity) {
    const std::optional<std::string> bytes = readFile(file, kLargestProfile);
    if (!bytes || capacity == 0) return {};
    const std::u16string text = decodeText(*bytes, UnmarkedText::Utf8);
    std::u16string_view value = findValue(text, trimmed(section), trimmed(key));
    value = unquoted(trimmed(value.substr(0, value.find(u'\0'))));
    return std::u16string(value.substr(0, capacity - 1));
}

}  // namespace corvane::emulation
