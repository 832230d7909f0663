#include "xml/Limits.h"

#include <algorithm>

namespace corvane::xml {
namespace {

// The largest number of `mark` that follow one another in a tag or declaration without one of
// `ends` between them, quoted texts left out.
std::size_t mostIn(std::string_view markup, char mark, std::string_view ends) {
    std::size_t most = 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i < markup.size() && markup[i] != '>'; ++i) {
        if (markup[i] == '"' || markup[i] == '\'') {
            i = markup.find(markup[i], i + 1);
            if (i == markup.npos) break;
        } else if (markup[i] == mark) {
            most = std::max(most, ++count);
        } else if (ends.find(markup[i]) != ends.npos) {
            count = 0;
        }
    }
    return most;
}

const char* excessOf(std::string_view markup) {
    if (markup.starts_with("<!ATTLIST"))
        return mostIn(markup, '|', ")") >= kMostTokens ? "Too many tokens in an enumeration"
                                                       : nullptr;
    if (markup.starts_with("<!") || markup.starts_with("<?")) return nullptr;
    return mostIn(markup, '=', "") > kMostAttributes ? "Too many attributes" : nullptr;
}

}  // namespace

const char* excessIn(std::string_view text) {
    // No "<" can stand within a tag or an enumeration, so only what is long without one is looked
    // at: a token takes two bytes at least, and an attribute more.
    constexpr std::size_t kStride = 2 * kMostTokens;
    std::size_t at = text.find('<');
    while (at != text.npos && text.size() - at > kStride) {
        const std::size_t last = text.rfind('<', at + kStride);
        if (last > at) {
            at = last;
            continue;
        }
        const std::size_t end = std::min(text.find('<', at + 1), text.size());
        if (const char* excess = excessOf(text.substr(at, end - at))) return excess;
        at = end == text.size() ? text.npos : end;
    }
    return nullptr;
}

}  // namespace corvane::xml
