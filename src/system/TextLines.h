#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::system {

/// What a text file without byte-order mark is.
enum class UnmarkedText {
    Utf8,
    Guessed,  ///< UTF-16 when one of the first two bytes is zero, else UTF-8.
};

/// The text of a file in UTF-8 or UTF-16, by its byte-order mark, which is no part of the text.
/// Ill-formed UTF-8 becomes U+FFFD; an odd last byte of UTF-16 is dropped.
std::u16string decodeText(std::string_view bytes, UnmarkedText unmarked);

/// 16-bit text of UTF-16 bytes in little-endian order without mark.
std::u16string fromUtf16Bytes(std::string_view bytes);

/// The text without blanks, tabs, form feeds and vertical tabs at its ends.
std::u16string_view trimmed(std::u16string_view text);

/// The text without one pair of equal quotes, single or double, around it.
std::u16string_view unquoted(std::u16string_view text);

/// The value of a hexadecimal digit in either case, or -1.
constexpr int hexDigit(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    return -1;
}

/// Walks over the lines of a text. Carriage returns and line feeds end a line in any mixture, and
/// lines without content are left out.
class TextLines {
public:
    explicit TextLines(std::u16string_view text) : rest_(text) {}

    /// The next line, trimmed, or nothing at the end.
    std::optional<std::u16string_view> next();
    /// The same without moving on.
    std::optional<std::u16string_view> peek() const { return TextLines(*this).next(); }

private:
    std::u16string_view rest_;
};

}  // namespace corvane::system
