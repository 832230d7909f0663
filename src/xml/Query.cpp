#include "xml/Query.h"

#include "xml/Names.h"
#include "xml/Tree.h"
#include "xml/XPath.h"

namespace corvane::xml {
namespace {

std::u16string_view trimmed(std::u16string_view query) {
    while (!query.empty() && isWhite(query.front()))
        query.remove_prefix(1);
    while (!query.empty() && isWhite(query.back()))
        query.remove_suffix(1);
    return query;
}

}  // namespace

std::optional<Matches> select(const Element& context, std::u16string_view query) {
    const std::u16string_view name = trimmed(query);
    if (!isQualifiedName(name)) return evaluateXPath(context, query);
    Matches matches;
    for (const Element* at = elementFrom(context.firstChild, name); at;
         at = elementFrom(at->next, name))
        matches.push_back(at);
    return matches;
}

std::optional<Matches> selectFirst(const Element& context, std::u16string_view query) {
    const std::u16string_view name = trimmed(query);
    if (!isQualifiedName(name)) {
        std::optional<Matches> matches = evaluateXPath(context, query);
        if (matches && matches->size() > 1) matches->erase(matches->begin() + 1, matches->end());
        return matches;
    }
    const Element* first = elementFrom(context.firstChild, name);
    return first ? Matches{first} : Matches{};
}

}  // namespace corvane::xml
