#include "db/Statement.h"

#include <algorithm>

#include <corvane/text/CStringW.h>

namespace {

constexpr std::u16string_view kBlanks = u" \t\r\n";
constexpr const char16_t* kReadingWords[] = {u"SELECT", u"WITH", u"VALUES", u"EXPLAIN"};

CStringW firstWord(std::u16string_view statement) {
    statement.remove_prefix(std::min(statement.find_first_not_of(kBlanks), statement.size()));
    const std::size_t end =
        statement.find_first_not_of(u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    return statement.substr(0, end);
}

}  // namespace

bool isReadingStatement(std::u16string_view statement) {
    const CStringW word = firstWord(statement);
    const bool reads = std::ranges::any_of(
        kReadingWords, [&](const char16_t* reading) { return word.CompareNoCase(reading) == 0; });
    const std::size_t end = statement.find(u';');
    return reads && (end == statement.npos ||
                     statement.find_first_not_of(kBlanks, end + 1) == statement.npos);
}
