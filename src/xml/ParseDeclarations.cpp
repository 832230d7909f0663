#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "system/Unicode.h"
#include "xml/Limits.h"
#include "xml/Names.h"
#include "xml/Parse.h"

// What a document type declares, and what comes of it in the content.
namespace corvane::xml {
namespace {

// Entities may expand to this many times the source, and to a little more in a small one.
constexpr std::size_t kExpansionFactor = 10;
constexpr std::size_t kFreeExpansion = std::size_t{1} << 20;
// Each default is compared with every other attribute of each element that takes it.
constexpr int kMostDefaults = 1000;
// The parser's tables of declarations slow down as they fill.
constexpr int kMostDeclarations = 20'000;

// Declarations of these have no effect: the parser knows what they stand for.
bool isPredefined(std::string_view entity) {
    constexpr std::string_view kNames[] = {"lt", "gt", "amp", "quot", "apos"};
    return std::find(std::begin(kNames), std::end(kNames), entity) != std::end(kNames);
}

}  // namespace

// The declarations of the internal subset are put into effect by the load, so the tree keeps the
// name and the external identifier only.
void Parse::documentType(void* self, const xmlChar* name, const xmlChar* publicId,
                         const xmlChar* systemId) {
    report(self, [=](Parse& parse, const Position&) {
        const auto quoted = [](const xmlChar* text) {
            const char quote = std::strchr(chars(text), '"') ? '\'' : '"';
            return quote + std::string(view(text)) + quote;
        };
        std::string data(view(name));
        if (publicId) data += " PUBLIC " + quoted(publicId);
        if (systemId) data += (publicId ? " " : " SYSTEM ") + quoted(systemId);
        parse.builder_.data(Kind::DocType, data);
        parse.inDocumentType_ = true;
        // The parser's own tables keep what is declared from here on.
        parse.library_.internalSubset(parse.context_, name, publicId, systemId);
    });
}

void Parse::endDocumentType(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    of(self).inDocumentType_ = false;
}

void Parse::declareEntity(void* self, const xmlChar* name, int type, const xmlChar* publicId,
                          const xmlChar* systemId, xmlChar* content) {
    report(self, [=](Parse& parse, const Position&) {
        parse.countDeclaration();
        // A fragment in an identifier, which nobody follows, makes the parser pass over references.
        parse.context_->wellFormed = 1;
        if (const char* excess = excessIn(view(content))) parse.stop(excess);
        const bool general =
            type == XML_INTERNAL_GENERAL_ENTITY || type == XML_EXTERNAL_GENERAL_PARSED_ENTITY;
        if (general && isPredefined(view(name))) return;
        parse.library_.declareEntity(parse.context_, name, type, publicId, systemId, content);
    });
}

void Parse::declareAttribute(void* self, const xmlChar*, const xmlChar* name, int, int,
                             const xmlChar* value, xmlEnumerationPtr values) {
    of(self).library_.freeEnumeration(values);
    report(self, [=](Parse& parse, const Position&) {
        parse.countDeclaration();
        if (value && ++parse.defaults_ > kMostDefaults) parse.stop("Too many default attributes");
        if (!isQualifiedName(system::fromUtf8(view(name))))
            parse.stop("An attribute cannot have the name " + std::string(view(name)));
    });
}

void Parse::declareNotation(void* self, const xmlChar* name, const xmlChar* publicId,
                            const xmlChar* systemId) {
    report(self, [=](Parse& parse, const Position&) {
        parse.countDeclaration();
        if (!publicId && !systemId)
            parse.stop("The notation " + std::string(view(name)) + " has no identifier");
    });
}

void Parse::countDeclaration() {
    if (++declarations_ > kMostDeclarations) stop("Too many declarations");
}

// Counts what comes out of declarations rather than the source itself.
bool Parse::expand(std::size_t size) {
    expanded_ += size + 1;
    if (expanded_ > kExpansionFactor * source_.size() + kFreeExpansion)
        stop("The declarations expand too far");
    return !fault_;
}

// Refuses what is not declared or lies elsewhere.
xmlEntityPtr Parse::admit(const xmlChar* name, xmlEntityPtr entity) {
    if (fault_) return nullptr;
    if (!entity) {
        stop("The entity " + std::string(view(name)) + " is not declared");
    } else if (!entity->content) {
        stop("The entity " + std::string(view(name)) + " is external");
    } else if (expand(view(entity->content).size())) {
        return entity;
    }
    return nullptr;
}

xmlEntityPtr Parse::findEntity(void* self, const xmlChar* name) {
    Parse& parse = of(self);
    return parse.admit(name, parse.library_.findEntity(parse.context_, name));
}

// A declaration may be put together from several of these, so their parts count together.
xmlEntityPtr Parse::findParameterEntity(void* self, const xmlChar* name) {
    Parse& parse = of(self);
    const xmlEntityPtr entity =
        parse.admit(name, parse.library_.findParameterEntity(parse.context_, name));
    if (!entity) return nullptr;
    const std::string_view content = view(entity->content);
    parse.alternatives_ +=
        static_cast<std::size_t>(std::count(content.begin(), content.end(), '|'));
    if (parse.alternatives_ > kMostTokens) parse.stop("Too many tokens in parameter entities");
    return parse.fault_ ? nullptr : entity;
}

}  // namespace corvane::xml
