#pragma once

#include <string_view>

namespace corvane::xml {

/// The prefix of a name, and what comes after it.
inline std::u16string_view prefixOf(std::u16string_view name) {
    const std::size_t colon = name.find(u':');
    return colon == name.npos ? std::u16string_view() : name.substr(0, colon);
}
inline std::u16string_view localNameOf(std::u16string_view name) {
    const std::size_t colon = name.find(u':');
    return colon == name.npos ? name : name.substr(colon + 1);
}

/// True for half a surrogate pair, as corvane::takeCodePoint gives it.
constexpr bool isHalfPair(char32_t point) {
    return point >= 0xD800 && point <= 0xDFFF;
}

/// How many units at the start of the text are a name without colon; 0 when none is there.
std::size_t nameLength(std::u16string_view text);

/// True for an XML name with at most one colon, which has a name on either side.
bool isQualifiedName(std::u16string_view name);

/// True when XML can carry the text: no control characters but tab and line ends, no half surrogate
/// pairs, no U+FFFE and U+FFFF.
bool isCarriable(std::u16string_view text);

}  // namespace corvane::xml
