#include "xml/Names.h"

#include <algorithm>
#include <iterator>

#include <corvane/base/Text.h>

#include "xml/Node.h"

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

bool isUnqualifiedName(std::u16string_view name) {
    return !name.empty() && nameLength(name) == name.size();
}

}  // namespace

std::size_t nameLength(std::u16string_view text) {
    std::u16string_view rest = text;
    if (rest.empty() || !startsName(takeCodePoint(rest))) return 0;
    std::size_t length = text.size() - rest.size();
    while (!rest.empty() && continuesName(takeCodePoint(rest)))
        length = text.size() - rest.size();
    return length;
}

bool isQualifiedName(std::u16string_view name) {
    const std::size_t colon = name.find(u':');
    if (colon == name.npos) return isUnqualifiedName(name);
    return isUnqualifiedName(name.substr(0, colon)) && isUnqualifiedName(name.substr(colon + 1));
}

bool isCarriable(std::u16string_view text) {
    const auto isUnusual = [](char16_t unit) { return unit < 0x20 || unit >= 0xD800; };
    while (true) {
        const auto at = std::find_if(text.begin(), text.end(), isUnusual);
        text.remove_prefix(static_cast<std::size_t>(at - text.begin()));
        if (text.empty()) return true;
        const char32_t point = takeCodePoint(text);
        const bool isControl = point < 0x20 && !isWhite(static_cast<char16_t>(point));
        if (isControl || isHalfPair(point) || point == 0xFFFE || point == 0xFFFF) return false;
    }
}

}  // namespace corvane::xml
