#include <clocale>
#include <cwchar>
#include <cwctype>
#include <locale.h>
#include <string>

#include "system/Unicode.h"

namespace corvane::system {

namespace {

// A locale object of our own: the process's locale belongs to the host, which may change it at any
// time.
locale_t unicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

char16_t map(char16_t unit, wint_t (*mapping)(wint_t, locale_t), char16_t asciiFirst) {
    if (unit < 0x80) {
        const bool letter = unit >= asciiFirst && unit < asciiFirst + 26;
        return letter ? static_cast<char16_t>(unit ^ 0x20) : unit;
    }
    const locale_t locale = unicodeLocale();
    if (!locale || isHighSurrogate(unit) || isLowSurrogate(unit)) return unit;
    const wint_t mapped = mapping(unit, locale);
    return mapped <= 0xFFFF ? static_cast<char16_t>(mapped) : unit;
}

}  // namespace

char16_t toLower(char16_t unit) {
    return map(unit, towlower_l, u'A');
}

char16_t toUpper(char16_t unit) {
    return map(unit, towupper_l, u'a');
}

std::u16string widen(std::string_view text) {
    return fromUtf8(text);
}

std::string narrow(std::u16string_view text) {
    return toUtf8(text);
}

namespace {

// An object of our own, as the process's locale belongs to the host.
locale_t userLocale() {
    static const locale_t locale = newlocale(LC_COLLATE_MASK | LC_CTYPE_MASK, "", nullptr);
    return locale;
}

// wchar_t holds a whole code point here.
std::wstring codePoints(std::u16string_view text) {
    std::wstring points;
    points.reserve(text.size());
    while (!text.empty())
        points += static_cast<wchar_t>(takeCodePoint(text));
    return points;
}

}  // namespace

int collate(std::u16string_view a, std::u16string_view b) {
    int order = 0;
    if (const locale_t locale = userLocale())
        order = ::wcscoll_l(codePoints(a).c_str(), codePoints(b).c_str(), locale);
    return order != 0 ? order : a.compare(b);
}

}  // namespace corvane::system
