#pragma once

#include <string_view>
#include <type_traits>

// The few operations on text that the library, its modules and its tools share.

namespace corvane {

/// Whether the unit is the first one of a surrogate pair.
constexpr bool isHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
/// Whether the unit is the second one of a surrogate pair.
constexpr bool isLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

/// The code point of a surrogate pair.
constexpr char32_t codePoint(char16_t high, char16_t low) {
    return 0x10000 + ((char32_t{high} & 0x3FF) << 10) + (low & 0x3FF);
}

/// Takes the first code point off a text that is not empty. A lone surrogate is one of its own.
constexpr char32_t takeCodePoint(std::u16string_view& text) {
    const char16_t unit = text.front();
    text.remove_prefix(1);
    if (!isHighSurrogate(unit) || text.empty() || !isLowSurrogate(text.front())) return unit;
    const char16_t low = text.front();
    text.remove_prefix(1);
    return codePoint(unit, low);
}

/// The text without the units of `blanks` at its ends.
template <typename Unit>
constexpr std::basic_string_view<Unit> trimmed(
    std::basic_string_view<Unit> text, std::type_identity_t<std::basic_string_view<Unit>> blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace corvane
