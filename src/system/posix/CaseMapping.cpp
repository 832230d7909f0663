#include <clocale>
#include <cwctype>
#include <locale.h>

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

}  // namespace corvane::system
