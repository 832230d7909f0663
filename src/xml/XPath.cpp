#include "xml/XPath.h"

#include <algorithm>
#include <libxml/hash.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>
#include <memory>
#include <new>
#include <string>

#include "system/Unicode.h"
#include "xml/DocumentNode.h"
#include "xml/Names.h"
#include "xml/Shadow.h"

namespace corvane::xml {
namespace {

// Steps of the evaluator that a query may take: seconds, not minutes. A step can cost a pass over
// what has been found, so the limit keeps close to what sensible queries need.
constexpr unsigned long kFreeSteps = 1'000'000;
constexpr unsigned long kStepsOfElement = 32;
// Comparisons of nodes with nodes found before, where a query makes such.
constexpr unsigned long kGatheringBudget = 1'000'000'000;
constexpr std::size_t kLongestQuery = 1 << 16;
// The evaluator orders attributes, texts and comments by walking past those beside them, which no
// step counts.
constexpr std::size_t kLongestRun = 5'000;

const xmlChar* chars(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

struct ContextDeleter {
    void operator()(xmlXPathContextPtr context) const { xmlXPathFreeContext(context); }
};
struct ResultDeleter {
    void operator()(xmlXPathObjectPtr result) const { xmlXPathFreeObject(result); }
};

void ignoreError(void*, xmlErrorPtr) {}

void refuse(xmlXPathParserContextPtr parser, int) {
    xmlXPathErr(parser, XPATH_UNKNOWN_FUNC_ERROR);
}

// Answers for functions that do not exist, for which the evaluator prints a message otherwise.
xmlXPathFunction findFunction(void* self, const xmlChar* name, const xmlChar* space) {
    const auto* context = static_cast<xmlXPathContextPtr>(self);
    return xmlHashLookup2(context->funcHash, name, space) ? nullptr : refuse;
}

// The evaluator has a second way for queries without brackets and "@", which stops at a depth of
// 10,000 and counts no steps. Parentheses around the whole keep it from taking that.
std::string evaluable(std::u16string_view query) {
    std::string text = system::toUtf8(query);
    if (text.find_first_of("[(@") == text.npos) text = "(" + text + ")";
    return text;
}

bool continuesName(char16_t unit) {
    const char16_t name[] = {u'a', unit};
    return unit != u':' && isQualifiedName({name, 2});
}

// Makes each prefix that the query may use stand for itself. What only looks like a prefix, in a
// literal or before an axis, does no harm.
void registerPrefixes(xmlXPathContextPtr context, std::u16string_view query) {
    for (std::size_t colon = query.find(u':'); colon != query.npos;
         colon = query.find(u':', colon + 1)) {
        std::size_t start = colon;
        while (start > 0 && continuesName(query[start - 1]))
            --start;
        while (start < colon && !isQualifiedName(query.substr(start, 1)))
            ++start;
        if (start == colon) continue;
        const std::string prefix = system::toUtf8(query.substr(start, colon - start));
        if (prefix != "xml") xmlXPathRegisterNs(context, chars(prefix), chars(prefix));
    }
}

// True when a path may begin behind this text: at the start of the query or of a part of it.
bool endsPath(std::u16string_view before) {
    before = before.substr(0, before.find_last_not_of(u" \t\r\n") + 1);
    return before.empty() || std::u16string_view(u"[(|,=<>+-:").find(before.back()) != before.npos;
}

// True when the query may follow another axis than child or attribute from many nodes at once. The
// evaluator compares each node that it finds so with all that it has found before.
bool gathers(std::u16string_view query) {
    const auto followsPath = [&](std::size_t at) {
        std::u16string_view before = query.substr(0, at);
        if (before.ends_with(u'.') && !before.ends_with(u"..")) before.remove_suffix(1);
        return !endsPath(before);
    };
    for (std::size_t at = query.find(u"//"); at != query.npos; at = query.find(u"//", at + 2)) {
        if (followsPath(at)) return true;
    }
    for (std::size_t at = query.find(u"::"); at != query.npos; at = query.find(u"::", at + 2)) {
        const std::u16string_view axis = query.substr(0, at);
        const bool plain = axis.ends_with(u"child") || axis.ends_with(u"attribute") ||
                           (axis.ends_with(u"self") && !axis.ends_with(u"-self"));
        if (plain) continue;
        constexpr std::u16string_view kAxisLetters = u"abcdefghijklmnopqrstuvwxyz- ";
        if (followsPath(axis.find_last_not_of(kAxisLetters) + 1)) return true;
    }
    for (std::size_t at = query.find(u".."); at != query.npos; at = query.find(u"..", at + 2)) {
        if (!endsPath(query.substr(0, at))) return true;
    }
    return false;
}

unsigned long stepLimit(const Shadow& shadow, std::u16string_view query) {
    const auto size = static_cast<unsigned long>(shadow.size());
    const unsigned long limit = kFreeSteps + kStepsOfElement * size;
    return gathers(query) ? std::min(limit, kGatheringBudget / size) : limit;
}

const Element& topOf(const Element& element) {
    const Element* top = &element;
    while (top->parent)
        top = top->parent;
    return *top;
}

std::optional<Matches> evaluate(const Shadow& shadow, const Element& context,
                                std::u16string_view query) {
    if (shadow.longestRun() > kLongestRun) return std::nullopt;
    const std::unique_ptr<xmlXPathContext, ContextDeleter> evaluator(
        xmlXPathNewContext(shadow.document()));
    if (!evaluator) throw std::bad_alloc();
    evaluator->node = shadow.find(context);
    evaluator->opLimit = stepLimit(shadow, query);
    evaluator->error = ignoreError;
    xmlXPathRegisterFuncLookup(evaluator.get(), findFunction, evaluator.get());
    registerPrefixes(evaluator.get(), query);

    const std::unique_ptr<xmlXPathObject, ResultDeleter> result(
        xmlXPathEval(chars(evaluable(query)), evaluator.get()));
    if (!result || result->type != XPATH_NODESET) return std::nullopt;
    Matches matches;
    if (xmlNodeSetPtr set = result->nodesetval) {
        xmlXPathNodeSetSort(set);
        for (int i = 0; i < set->nodeNr; ++i)
            matches.push_back(Shadow::original(set->nodeTab[i]));
    }
    return matches;
}

}  // namespace

std::optional<Matches> evaluateXPath(const Element& context, std::u16string_view query) {
    if (query.size() > kLongestQuery || !isCarriable(query)) return std::nullopt;
    const Element& top = topOf(context);
    if (top.kind != Kind::Document) return evaluate(Shadow(top), context, query);
    const auto& document = static_cast<const DocumentNode&>(top);
    if (!document.shadow) document.shadow = std::make_unique<Shadow>(document);
    return evaluate(*document.shadow, context, query);
}

}  // namespace corvane::xml
