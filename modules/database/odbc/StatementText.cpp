#include "StatementText.h"

#include <algorithm>

#include "common/Guard.h"

namespace qor_db::odbc {
namespace {

constexpr std::u16string_view kSpace = u" \t\r\n\f\v";
constexpr std::u16string_view kLetters = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
constexpr std::u16string_view kTransactionWords[] = {
    u"ABORT", u"BEGIN", u"COMMIT", u"END", u"RELEASE", u"ROLLBACK", u"SAVE", u"SAVEPOINT", u"START",
};

/// Goes through a text token by token.
class Tokens {
public:
    explicit Tokens(std::u16string_view text) : rest_(text) {}

    /// The next token, empty at the end: a word, a quoted text or a single other character. White
    /// space and comments are left out.
    std::u16string_view next() {
        skipBlank();
        if (rest_.empty()) return {};
        return take(lengthOfToken());
    }

private:
    std::u16string_view take(std::size_t count) {
        const std::u16string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    // After the next `mark`, or at the end.
    void skipBehind(std::u16string_view mark, std::size_t start) {
        const std::size_t found = rest_.find(mark, start);
        take(found == rest_.npos ? found : found + mark.size());
    }

    void skipBlank() {
        while (true) {
            take(std::min(rest_.find_first_not_of(kSpace), rest_.size()));
            if (rest_.starts_with(u"--")) {
                skipBehind(u"\n", 2);
            } else if (rest_.starts_with(u"/*")) {
                skipBehind(u"*/", 2);
            } else {
                return;
            }
        }
    }

    std::size_t lengthOfToken() const {
        const char16_t first = rest_.front();
        if (kLetters.find(first) != kLetters.npos) return rest_.find_first_not_of(kLetters);
        if (first != u'\'' && first != u'"' && first != u'`' && first != u'[') return 1;
        // A doubled quote within the text begins the next token, which comes to the same.
        const std::size_t end = rest_.find(first == u'[' ? u']' : first, 1);
        return end == rest_.npos ? end : end + 1;
    }

    std::u16string_view rest_;
};

bool isTransactionWord(std::u16string_view token) {
    const CStringW word = token;
    return std::any_of(std::begin(kTransactionWords), std::end(kTransactionWords),
                       [&](std::u16string_view name) { return word.CompareNoCase(name) == 0; });
}

Status refuse(const char16_t* why) {
    return driver::failure(ErrorCode::BadQuery, why);
}

}  // namespace

Outcome<std::u16string_view> oneStatement(std::u16string_view text) {
    if (text.find(u'\0') != text.npos) return refuse(u"The statement holds a zero character.");
    constexpr std::u16string_view kEnd = u";";
    Tokens tokens(text);
    std::u16string_view token = tokens.next();
    while (token == kEnd)
        token = tokens.next();
    if (token.empty()) return refuse(u"The statement is empty.");
    if (isTransactionWord(token)) return refuse(u"A statement may not begin or end a transaction.");
    const char16_t* const start = token.data();
    const char16_t* end = nullptr;
    for (; !token.empty(); token = tokens.next()) {
        if (token == kEnd) {
            if (!end) end = token.data();
        } else if (end) {
            return refuse(u"A query is one statement, not several.");
        }
    }
    if (!end) end = text.data() + text.size();
    return std::u16string_view(start, static_cast<std::size_t>(end - start));
}

}  // namespace qor_db::odbc
