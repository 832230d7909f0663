#include "xml/Names.h"

#include <algorithm>
#include <iterator>

#include "system/Unicode.h"

namespace corvane::xml {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

bool isIn(const Range* begin, const Range* end, char32_t point) {
    const Range* range =
        std::lower_bound(begin, end, point, [](const Range& a, char32_t b) { return a.last < b; });
    return range != end && range->first <= point;
}

// The productions NameStartChar and NameChar of XML 1.0, fifth edition, without the colon.
constexpr Range kStart[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
constexpr Range kFurther[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040},
};

bool isAsciiLetter(char32_t point) {
    return (point >= 'a' && point <= 'z') || (point >= 'A' && point <= 'Z');
}
bool startsName(char32_t point) {
    if (isAsciiLetter(point)) return true;
    return isIn(std::begin(kStart), std::end(kStart), point);
}
bool continuesName(char32_t point) {
    return startsName(point) || isIn(std::begin(kFurther), std::end(kFurther), point);
}

// Takes one character off the text; a half surrogate pair comes out as itself, which no range
// holds.
char32_t takeCharacter(std::u16string_view& text) {
    const char32_t unit = text.front();
    text.remove_prefix(1);
    if (!system::isHighSurrogate(static_cast<char16_t>(unit)) || text.empty() ||
        !system::isLowSurrogate(text.front()))
        return unit;
    const char32_t low = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((unit & 0x3FF) << 10) + (low & 0x3FF);
}

bool isUnqualifiedName(std::u16string_view name) {
    return !name.empty() && nameLength(name) == name.size();
}

}  // namespace

std::size_t nameLength(std::u16string_view text) {
    std::u16string_view rest = text;
    if (rest.empty() || !startsName(takeCharacter(rest))) return 0;
    std::size_t length = text.size() - rest.size();
    while (!rest.empty() && continuesName(takeCharacter(rest)))
        length = text.size() - rest.size();
    return length;
}

bool isQualifiedName(std::u16string_view name) {
    const std::size_t colon = name.find(u':');
    if (colon == name.npos) return isUnqualifiedName(name);
    return isUnqualifiedName(name.substr(0, colon)) && isUnqualifiedName(name.substr(colon + 1));
}

bool isCarriable(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit >= 0x20 && unit < 0xD800) continue;
        if (unit == u'\t' || unit == u'\n' || unit == u'\r') continue;
        if (unit < 0x20 || unit >= 0xFFFE || system::isLowSurrogate(unit)) return false;
        if (!system::isHighSurrogate(unit)) continue;
        ++i;
        if (i == text.size() || !system::isLowSurrogate(text[i])) return false;
    }
    return true;
}

}  // namespace corvane::xml
