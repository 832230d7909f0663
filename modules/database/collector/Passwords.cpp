#include "Passwords.h"

#include <algorithm>

namespace collector {
namespace {

constexpr const char16_t* kMask = u"***";

bool isSecret(CStringW key) {
    key.MakeLower();
    for (const char16_t* word : {u"pwd", u"password", u"secret", u"token"}) {
        if (key.Find(word) >= 0) return true;
    }
    return false;
}

// Behind the value that starts at `start`: the position of its semicolon, or the end.
std::size_t endOfValue(std::u16string_view text, std::size_t start) {
    const std::size_t first = text.find_first_not_of(u" \t", start);
    if (first == text.npos) return text.size();
    const char16_t open = text[first];
    std::size_t position = start;
    if (open == u'{' || open == u'"' || open == u'\'') {
        const char16_t close = open == u'{' ? u'}' : open;
        position = text.find(close, first + 1);
        // A doubled closing mark stands for itself.
        while (position != text.npos && position + 1 < text.size() && text[position + 1] == close)
            position = text.find(close, position + 2);
        if (position == text.npos) return text.size();
    }
    return std::min(text.find(u';', position), text.size());
}

}  // namespace

Passwords::Passwords(const CStringW& connectionString) {
    const std::u16string_view text = connectionString;
    std::size_t start = 0;
    std::size_t shown = 0;
    while (start < text.size()) {
        const std::size_t equals = text.find(u'=', start);
        const std::size_t semicolon = text.find(u';', start);
        if (equals == text.npos) break;
        if (semicolon < equals) {  // a word without a value
            start = semicolon + 1;
            continue;
        }
        const std::size_t end = endOfValue(text, equals + 1);
        if (isSecret(text.substr(start, equals - start)) && end > equals + 1) {
            add(text.substr(equals + 1, end - equals - 1));
            description_ += text.substr(shown, equals + 1 - shown);
            description_ += kMask;
            shown = end;
        }
        start = end + 1;
    }
    description_ += text.substr(shown);
    // The longer first: one secret may be a part of another.
    std::sort(secrets_.begin(), secrets_.end(),
              [](const CStringW& a, const CStringW& b) { return a.GetLength() > b.GetLength(); });
}

// A driver may show a value as it is written or as it is meant.
void Passwords::add(std::u16string_view value) {
    CStringW written(value);
    written.Trim();
    CStringW bare = written;
    bare.Trim(u"{}\"'");
    CStringW meant = bare;
    for (const char16_t* mark : {u"}}", u"\"\"", u"''"})
        meant.Replace(mark, CStringW(mark).Left(1));
    for (const CStringW& form : {written, bare, meant}) {
        if (!form.IsEmpty()) secrets_.push_back(form);
    }
}

CStringW Passwords::mask(const CStringW& text) const {
    CStringW masked = text;
    for (const CStringW& secret : secrets_)
        masked.Replace(secret, kMask);
    return masked;
}

}  // namespace collector
