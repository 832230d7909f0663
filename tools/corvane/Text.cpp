#include "Text.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <span>

#include <corvane/base/Text.h>

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Blocks of East Asian writing and pictures that take two columns.
constexpr Range kWide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x4DBF},  {0x4E00, 0xA4CF}, {0xA960, 0xA97F},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},  {0xFF01, 0xFF60}, {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
// Marks that are on the character before them.
constexpr Range kMarks[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F},
                            {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
                            {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0x3099, 0x309A}, {0xFE00, 0xFE0F},
                            {0xFE20, 0xFE2F}};
constexpr Range kActedOn[] = {{0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C},
                              {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069},
                              {0xFEFF, 0xFEFF}};

bool within(std::span<const Range> ranges, char32_t point) {
    const auto range = std::ranges::lower_bound(ranges, point, {}, &Range::last);
    return range != ranges.end() && range->first <= point;
}

std::size_t columnsOf(char32_t point) {
    if (within(kMarks, point)) return 0;
    return within(kWide, point) ? 2 : 1;
}

}  // namespace

CStringW harmless(std::u16string_view text) {
    CStringW result;
    for (const char16_t unit : text) {
        if (unit == u'\t' || unit == u'\n' || unit == u'\r') {
            result += u' ';
        } else if (within(kActedOn, unit)) {
            result.AppendFormat(u"\\u%04x", static_cast<std::uint32_t>(unit));
        } else {
            result += unit;
        }
    }
    return result;
}

std::size_t displayWidth(std::u16string_view text) {
    std::size_t columns = 0;
    while (!text.empty())
        columns += columnsOf(corvane::takeCodePoint(text));
    return columns;
}

CStringW fitted(std::u16string_view text, std::size_t columns) {
    std::u16string_view rest = text;
    std::size_t used = 0;
    std::size_t kept = 0;  // units that leave room for the ellipsis
    while (!rest.empty()) {
        used += columnsOf(corvane::takeCodePoint(rest));
        if (used > columns) return CStringW(text.substr(0, kept)) + u"\u2026";
        if (used < columns) kept = text.size() - rest.size();
    }
    return text;
}

bool isUtf8(std::string_view text) {
    return wide(text).ToUtf8() == text;
}

std::vector<CStringW> linesOf(std::u16string_view text) {
    std::vector<CStringW> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        if (end > 0) lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

CStringW shownPath(std::u16string_view path) {
    CStringW shown = path;
    if constexpr (std::filesystem::path::preferred_separator == '/') shown.Replace(u'\\', u'/');
    return shown;
}

std::u16string_view lastName(std::u16string_view path) {
    return path.substr(path.find_last_of(u"/\\") + 1);
}

CStringW statusText(QorLong status) {
    CStringW text;
    text.Format(u"0x%08X", static_cast<std::uint32_t>(status));
    return text;
}
