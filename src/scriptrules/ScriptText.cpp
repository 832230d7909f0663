#include "scriptrules/ScriptText.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "system/Files.h"
#include "system/Unicode.h"

namespace corvane::scriptrules {
namespace {

constexpr std::size_t kMarkUnits = 5;
constexpr char16_t kReplacement = 0xFFFD;

std::u16string decodeUtf16(std::string_view bytes, bool highFirst) {
    std::u16string text;
    text.reserve(bytes.size());
    std::size_t at = 0;
    for (; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        text += static_cast<char16_t>(highFirst ? first << 8 | second : second << 8 | first);
    }
    if (at < bytes.size()) text += kReplacement;
    return text;
}

std::u16string decode(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return decodeUtf16(bytes, false);
    if (bytes.starts_with("\xFE\xFF")) return decodeUtf16(bytes, true);
    return system::fromUtf8(bytes);
}

bool mayBeMark(char16_t unit) {
    const unsigned low = unit & 0xFFU;
    return low == 0xEF || low == 0xBB || low == 0xBF || low == 0xFF || low == 0xFE;
}

// Line ends and U+0000, in place.
void settle(std::u16string& text) {
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') continue;
        text[end++] = text[at] ? text[at] : kReplacement;
    }
    text.resize(end);
}

}  // namespace

CStringW scriptText(std::string_view bytes) {
    std::u16string text = decode(bytes);
    settle(text);
    text.resize(bytes.size(), u' ');
    const auto marks =
        text.begin() + static_cast<std::ptrdiff_t>(std::min(kMarkUnits, text.size()));
    text.erase(std::remove_if(text.begin(), marks, mayBeMark), marks);
    return CStringW(std::move(text));
}

std::optional<CStringW> readScript(const CStringW& path) {
    const std::optional<std::string> bytes = system::readFile(path, kLargestScript);
    if (!bytes) return std::nullopt;
    return scriptText(*bytes);
}

bool isTooLarge(const CStringW& path) {
    const auto file = system::InputFile::open(path);
    return file && file->size() > kLargestScript;
}

}  // namespace corvane::scriptrules
