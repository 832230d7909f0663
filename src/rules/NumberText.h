#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "text/Numbers.h"

namespace corvane::rules {

/// The text without white space at its ends.
inline std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && text::isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && text::isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The number that a text is as a whole, white space at its ends aside, in decimal digits; nothing
/// for any other text and for a number that is out of range.
template <typename Number>
std::optional<Number> wholeNumber(std::u16string_view text) {
    text = trimmed(text);
    if (text.size() > 1 && text.front() == u'+' && text[1] != u'-') text.remove_prefix(1);
    std::string digits;
    for (const char16_t unit : text) {
        if (std::u16string_view(u"+-.eE0123456789").find(unit) == text.npos) return std::nullopt;
        digits += static_cast<char>(unit);
    }
    const char* const last = digits.data() + digits.size();
    Number number{};
    const auto [end, error] = std::from_chars(digits.data(), last, number);
    if (digits.empty() || error != std::errc() || end != last) return std::nullopt;
    return number;
}

}  // namespace corvane::rules
