#pragma once

#include <string>
#include <string_view>

#include <corvane/base/Text.h>

namespace corvane::system {

/// UTF-8 of 16-bit text. A lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);
void appendUtf8(std::string& out, std::u16string_view text);

/// 16-bit text of UTF-8. Each maximal ill-formed sequence (overlong forms and surrogates too)
/// becomes one U+FFFD.
std::u16string fromUtf8(std::string_view bytes);
void appendFromUtf8(std::u16string& out, std::string_view bytes);

/// True when every byte is below 0x80.
inline bool isAscii(std::string_view bytes) {
    unsigned char bits = 0;
    for (const char byte : bytes)
        bits |= static_cast<unsigned char>(byte);
    return bits < 0x80;
}

/// True when the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

using corvane::codePoint;
using corvane::isHighSurrogate;
using corvane::isLowSurrogate;

/// The simple case mapping of one unit, in every process locale alike. Surrogates map to
/// themselves.
char16_t toLower(char16_t unit);
char16_t toUpper(char16_t unit);

/// Compares without regard to case, unit by unit: below 0, 0 or above 0.
int compareNoCase(std::u16string_view a, std::u16string_view b);

/// 16-bit text of 8-bit text in the process's code page. On POSIX the code page is UTF-8 whatever
/// the locale says, so that a file means the same in every process; ill-formed bytes become U+FFFD.
std::u16string widen(std::string_view text);

/// 8-bit text in the process's code page; what the code page lacks becomes its default character.
std::string narrow(std::u16string_view text);

/// Compares in the order of the user's language, as the environment names it when the process first
/// asks: below 0, 0 or above 0. What this order holds equal is ordered by code unit, and so is
/// everything where the language is not installed.
int collate(std::u16string_view a, std::u16string_view b);

}  // namespace corvane::system
