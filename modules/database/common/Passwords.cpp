#include "Passwords.h"

#include <algorithm>

#include <corvane/base/Text.h>

namespace qor_db::driver {
namespace {

constexpr const char16_t* kMask = u"***";
constexpr std::size_t kLongestWord = 3;

bool isSecret(CStringW key) {
    key.MakeLower();
    for (const char16_t* word : {u"pwd", u"password", u"secret", u"token"}) {
        if (key.Find(word) >= 0) return true;
    }
    return false;
}

std::u16string_view trimmed(std::u16string_view text) {
    constexpr std::u16string_view kBlanks = u" \t\r\n";
    return corvane::trimmed(text, kBlanks);
}

// The mark that ends a value which starts with this one; 0 for a value without marks.
char16_t closingMark(char16_t open) {
    if (open == u'{') return u'}';
    return open == u'"' || open == u'\'' ? open : u'\0';
}

// A value in marks, which may hold semicolons. A doubled closing mark means itself, and a
// value whose closing mark is missing reaches to the end.
struct Marked {
    std::size_t end;  ///< Behind the closing mark.
    std::u16string_view written;
    CStringW meant;
};

Marked readMarked(std::u16string_view text, std::size_t open) {
    const char16_t close = closingMark(text[open]);
    std::size_t position = text.find(close, open + 1);
    while (position != text.npos && position + 1 < text.size() && text[position + 1] == close)
        position = text.find(close, position + 2);
    const std::size_t last = std::min(position, text.size());
    const std::u16string_view written = text.substr(open + 1, last - open - 1);
    CStringW meant = written;
    meant.Replace(CStringW(close, 2), CStringW(close, 1));
    return {std::min(last + 1, text.size()), written, std::move(meant)};
}

bool isWordUnit(char16_t unit) {
    return unit > 0x7F || (unit >= u'0' && unit <= u'9') ||
           ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'z');
}

// Whether the part of `text` is no part of a longer word.
bool standsAlone(std::u16string_view text, std::size_t start, std::size_t length) {
    const std::size_t end = start + length;
    return (start == 0 || !isWordUnit(text[start]) || !isWordUnit(text[start - 1])) &&
           (end == text.size() || !isWordUnit(text[end - 1]) || !isWordUnit(text[end]));
}

bool isHidden(std::u16string_view text, std::size_t start, std::u16string_view secret) {
    return text.substr(start, secret.size()) == secret &&
           (secret.size() > kLongestWord || standsAlone(text, start, secret.size()));
}

}  // namespace

Passwords::Passwords(std::u16string_view text) {
    std::size_t shown = 0;
    for (std::size_t start = 0, next = 0; start < text.size(); start = next + 1) {
        next = std::min(text.find(u';', start), text.size());
        const std::size_t equals = text.substr(0, next).find(u'=', start);
        if (equals == text.npos || !isSecret(text.substr(start, equals - start))) continue;
        const std::u16string_view value = trimmed(text.substr(equals + 1, next - equals - 1));
        if (value.empty()) continue;
        add(value);
        std::size_t end = next;
        if (closingMark(value[0])) {
            const Marked marked = readMarked(text, text.find(value[0], equals + 1));
            end = std::min(text.find(u';', marked.end), text.size());
            add(trimmed(text.substr(equals + 1, end - equals - 1)));
            add(marked.written);
            add(marked.meant);
        }
        if (equals >= shown) {
            description_ += text.substr(shown, equals + 1 - shown);
            description_ += kMask;
        }
        shown = std::max(shown, end);
    }
    description_ += text.substr(shown);
    std::sort(secrets_.begin(), secrets_.end(),
              [](const CStringW& a, const CStringW& b) { return a.GetLength() > b.GetLength(); });
}

void Passwords::add(std::u16string_view secret) {
    if (!secret.empty()) secrets_.emplace_back(secret);
}

CStringW Passwords::mask(std::u16string_view text) const {
    std::u16string masked;
    for (std::size_t i = 0; i < text.size();) {
        const auto secret =
            std::find_if(secrets_.begin(), secrets_.end(),
                         [&](const CStringW& hidden) { return isHidden(text, i, hidden); });
        if (secret == secrets_.end()) {
            masked += text[i++];
        } else {
            masked += kMask;
            i += secret->View().size();
        }
    }
    return masked;
}

}  // namespace qor_db::driver
