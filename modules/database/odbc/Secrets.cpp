#include "Secrets.h"

#include <algorithm>
#include <utility>

namespace qor_db::odbc {
namespace {

constexpr std::u16string_view kSecretKeys[] = {u"PWD", u"PASSWORD", u"ACCESSTOKEN", u"NEWPASSWORD",
                                               u"TRUSTSTOREPASSWORD"};

bool isSecret(const CStringW& key) {
    return std::any_of(std::begin(kSecretKeys), std::end(kSecretKeys),
                       [&](std::u16string_view name) { return key.CompareNoCase(name) == 0; });
}

// The end of a value that stands in braces, in which a closing one is doubled.
std::size_t endOfBraces(std::u16string_view text, std::size_t start) {
    for (std::size_t i = start + 1; i < text.size(); ++i) {
        if (text[i] != u'}') continue;
        if (i + 1 == text.size() || text[i + 1] != u'}') return i + 1;
        ++i;
    }
    return text.size();
}

std::size_t endOfValue(std::u16string_view text, std::size_t start) {
    const std::size_t first = text.find_first_not_of(u" \t", start);
    const bool braces = first != text.npos && text[first] == u'{';
    return std::min(text.find(u';', braces ? endOfBraces(text, first) : start), text.size());
}

}  // namespace

Secrets::Secrets(std::u16string_view connectionString) {
    for (std::size_t start = 0; start < connectionString.size();) {
        const std::size_t equals = connectionString.find(u'=', start);
        if (equals == connectionString.npos) return;
        const std::size_t end = endOfValue(connectionString, equals + 1);
        CStringW key = connectionString.substr(start, equals - start);
        CStringW value = connectionString.substr(equals + 1, end - equals - 1);
        start = end + 1;
        if (!isSecret(key.Trim(u"; \t")) || value.Trim().IsEmpty()) continue;
        CStringW plain = value;
        secrets_.push_back(std::move(value));
        if (plain.GetAt(0) != u'{') continue;
        plain.TrimLeft(u'{').TrimRight(u'}').Replace(u"}}", u"}");
        if (!plain.IsEmpty()) secrets_.push_back(std::move(plain));
    }
}

CStringW Secrets::hide(CStringW text) const {
    for (const CStringW& secret : secrets_)
        text.Replace(secret.View(), u"***");
    return text;
}

}  // namespace qor_db::odbc
