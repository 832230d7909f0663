#include <cwchar>
#include <locale.h>
#include <string>

#include "system/Locale.h"
#include "system/Unicode.h"

namespace corvane::system {
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
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        const bool pair =
            isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1]);
        points += static_cast<wchar_t>(pair ? codePoint(unit, text[++i]) : char32_t{unit});
    }
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
