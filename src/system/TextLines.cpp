#include "system/TextLines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <corvane/base/Text.h>

#include "system/Unicode.h"

namespace corvane::system {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr std::u16string_view kBlanks = u" \t\v\f";
constexpr std::u16string_view kLineEnds = u"\r\n";

std::u16string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<std::uint8_t>(bytes[2 * i]);
        const auto second = static_cast<std::uint8_t>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return text;
}

}  // namespace

std::u16string decodeText(std::string_view bytes, UnmarkedText unmarked) {
    if (bytes.starts_with(kUtf8Mark)) return fromUtf8(bytes.substr(kUtf8Mark.size()));
    for (const std::string_view mark : {kLittleEndianMark, kBigEndianMark}) {
        if (bytes.starts_with(mark))
            return fromUtf16(bytes.substr(mark.size()), mark == kBigEndianMark);
    }
    if (unmarked == UnmarkedText::Guessed && bytes.size() >= 2) {
        const bool firstIsZero = bytes[0] == '\0';
        if (firstIsZero != (bytes[1] == '\0')) return fromUtf16(bytes, firstIsZero);
    }
    return fromUtf8(bytes);
}

std::u16string fromUtf16Bytes(std::string_view bytes) {
    return fromUtf16(bytes, false);
}

std::u16string_view trimmed(std::u16string_view text) {
    return corvane::trimmed(text, kBlanks);
}

std::u16string_view unquoted(std::u16string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == u'"' || text.front() == u'\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

std::optional<std::u16string_view> TextLines::next() {
    while (!rest_.empty()) {
        const std::size_t end = std::min(rest_.find_first_of(kLineEnds), rest_.size());
        const std::u16string_view line = trimmed(rest_.substr(0, end));
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (!line.empty()) return line;
    }
    return std::nullopt;
}

}  // namespace corvane::system
