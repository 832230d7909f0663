#include "xml/Parser.h"

#include <cstddef>
#include <cstring>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <limits>
#include <memory>
#include <new>
#include <string>

#include "xml/NameTable.h"

namespace corvane::xml {
namespace {

constexpr std::size_t kLargestSource = std::numeric_limits<int>::max() - 1;
// Entities may expand to this many times the source, and to a little more in a small one.
constexpr std::size_t kExpansionFactor = 10;
constexpr std::size_t kFreeExpansion = std::size_t{1} << 20;
// Each default is compared with every other attribute of each element that takes it, and each
// prefix is sought among all that are in scope.
constexpr int kMostDefaults = 1000;
constexpr int kMostPrefixes = 1000;
// The parser's tables of declarations slow down as they fill.
constexpr int kMostDeclarations = 20'000;
// What an attribute takes besides its name and value.
constexpr std::size_t kAttributeSyntax = 4;

const char* chars(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}
std::string_view view(const xmlChar* text) {
    return text ? chars(text) : "";
}
std::string_view view(const xmlChar* text, const xmlChar* end) {
    return {chars(text), static_cast<std::size_t>(end - text)};
}
std::string_view view(const xmlChar* text, int length) {
    return {chars(text), static_cast<std::size_t>(length)};
}

struct ContextDeleter {
    void operator()(xmlParserCtxtPtr context) const {
        xmlFreeDoc(context->myDoc);
        context->sax = nullptr;
        xmlFreeParserCtxt(context);
    }
};

// The state of one parse. The parser calls the static functions with a pointer to it, also while it
// parses the text of an entity in a context of its own.
class Parse {
public:
    Parse(std::string_view source, TreeBuilder& builder)
        : source_(source), builder_(builder), names_(builder.pool()) {}

    Fault run();

private:
    static Parse& of(void* self) { return *static_cast<Parse*>(self); }
    // Runs what a report asks for unless the parse has failed. No exception may cross the parser.
    template <typename Action>
    static void report(void* self, Action action) {
        Parse& parse = of(self);
        if (parse.fault_) return;
        try {
            action(parse);
        } catch (const std::bad_alloc&) {
            parse.stop("Out of memory");
        }
        parse.line_ = parse.context_->input ? parse.context_->input->line : parse.line_;
    }

    static void startDocument(void* self);
    static void startElement(void* self, const xmlChar* local, const xmlChar* prefix,
                             const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                             int attributeCount, int defaultCount, const xmlChar** attributes);
    static void endElement(void* self, const xmlChar*, const xmlChar*, const xmlChar*);
    static void characters(void* self, const xmlChar* text, int length);
    static void section(void* self, const xmlChar* text, int length);
    static void comment(void* self, const xmlChar* text);
    static void instruction(void* self, const xmlChar* target, const xmlChar* text);
    static void documentType(void* self, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId);
    static void declareEntity(void* self, const xmlChar* name, int type, const xmlChar* publicId,
                              const xmlChar* systemId, xmlChar* content);
    static void declareAttribute(void* self, const xmlChar*, const xmlChar*, int, int,
                                 const xmlChar* value, xmlEnumerationPtr values);
    static xmlEntityPtr findEntity(void* self, const xmlChar* name);
    static xmlEntityPtr findParameterEntity(void* self, const xmlChar* name);
    static xmlParserInputPtr resolve(void*, const xmlChar*, const xmlChar*) { return nullptr; }
    static void error(void* self, xmlErrorPtr error);

    xmlSAXHandler makeHandler() const;
    bool takeAttribute(std::u16string_view name, std::string_view value, bool expanded);
    void countDeclaration();
    bool expand(std::size_t size);
    xmlEntityPtr admit(const xmlChar* name, xmlEntityPtr entity);
    std::uint32_t tagLine() const;
    bool isEscaped(const xmlChar* text) const;
    void stop(std::string message);

    std::string_view source_;
    TreeBuilder& builder_;
    NameTable names_;
    Fault fault_;
    xmlParserCtxtPtr context_ = nullptr;
    int line_ = 0;  // Where the last report ended.
    std::size_t expanded_ = 0;
    int defaults_ = 0;
    int declarations_ = 0;
};

void Parse::stop(std::string message) {
    if (fault_) return;
    fault_.message = std::move(message);
    if (const xmlParserInputPtr input = context_->input) {
        fault_.line = input->line;
        fault_.column = input->col;
    }
    xmlStopParser(context_);
}

// The line on which the start tag begins that has just been read. A "<" cannot stand within a tag,
// so the last one begins it; the search is needed only where a line has ended since the last
// report.
std::uint32_t Parse::tagLine() const {
    const xmlParserInputPtr input = context_->input;
    int line = input->line;
    if (line != line_) {
        for (const xmlChar* at = input->cur; at > input->base && *at != '<'; --at)
            line -= *at == '\n';
    }
    return static_cast<std::uint32_t>(line);
}

// What a reference stands for comes from elsewhere than the source, and the parser then stands
// behind the semicolon.
bool Parse::isEscaped(const xmlChar* text) const {
    const xmlParserInputPtr input = context_->input;
    const bool inSource = text >= input->base && text <= input->end;
    return !inSource && input->cur > input->base && input->cur[-1] == ';';
}

void Parse::startDocument(void* self) {
    report(self, [](Parse& parse) {
        const std::string_view version = view(parse.context_->version);
        if (version != "1.0")
            parse.stop("XML version " + std::string(version) + " is not supported");
    });
}

void Parse::startElement(void* self, const xmlChar* local, const xmlChar* prefix, const xmlChar*,
                         int namespaceCount, const xmlChar** namespaces, int attributeCount,
                         int defaultCount, const xmlChar** attributes) {
    report(self, [=](Parse& parse) {
        parse.builder_.startElement(parse.names_.name(prefix, local), parse.tagLine());
        // Two entries for each prefix.
        if (parse.context_->nsNr / 2 > kMostPrefixes) parse.stop("Too many prefixes in scope");
        for (std::ptrdiff_t i = 0; i < namespaceCount; ++i) {
            const xmlChar** at = namespaces + 2 * i;
            // Nothing tells those apart that come from a declaration.
            if (!parse.takeAttribute(parse.names_.declaration(at[0]), view(at[1]), true)) return;
        }
        // Five pointers each: local name, prefix, namespace, begin and end of the value.
        for (std::ptrdiff_t i = 0; i < attributeCount; ++i) {
            const xmlChar** at = attributes + 5 * i;
            // The last ones are those that the source leaves out.
            const bool isDefault = i >= attributeCount - defaultCount;
            if (!parse.takeAttribute(parse.names_.name(at[1], at[0]), view(at[3], at[4]),
                                     isDefault))
                return;
        }
    });
}

bool Parse::takeAttribute(std::u16string_view name, std::string_view value, bool expanded) {
    if (expanded && !expand(name.size() + value.size() + kAttributeSyntax)) return false;
    builder_.attribute(name, value);
    return true;
}

void Parse::endElement(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    report(self, [](Parse& parse) { parse.builder_.endElement(); });
}

void Parse::characters(void* self, const xmlChar* text, int length) {
    report(self, [=](Parse& parse) {
        parse.builder_.characters(view(text, length), parse.isEscaped(text));
    });
}

void Parse::section(void* self, const xmlChar* text, int length) {
    report(self, [=](Parse& parse) { parse.builder_.data(Kind::CData, view(text, length)); });
}

void Parse::comment(void* self, const xmlChar* text) {
    report(self, [=](Parse& parse) { parse.builder_.data(Kind::Comment, view(text)); });
}

void Parse::instruction(void* self, const xmlChar* target, const xmlChar* text) {
    report(self, [=](Parse& parse) {
        std::string data(view(target));
        if (text) data.append(" ").append(view(text));
        parse.builder_.data(Kind::Instruction, data);
    });
}

// The declarations of the internal subset are put into effect by the load, so the tree keeps the
// name and the external identifier only.
void Parse::documentType(void* self, const xmlChar* name, const xmlChar* publicId,
                         const xmlChar* systemId) {
    report(self, [=](Parse& parse) {
        const auto quoted = [](const xmlChar* text) {
            const char quote = std::strchr(chars(text), '"') ? '\'' : '"';
            return quote + std::string(view(text)) + quote;
        };
        std::string data(view(name));
        if (publicId) data += " PUBLIC " + quoted(publicId);
        if (systemId) data += (publicId ? " " : " SYSTEM ") + quoted(systemId);
        parse.builder_.data(Kind::DocType, data);
        // The parser's own tables keep what is declared from here on.
        xmlSAX2StartDocument(parse.context_);
        xmlSAX2InternalSubset(parse.context_, name, publicId, systemId);
    });
}

void Parse::declareEntity(void* self, const xmlChar* name, int type, const xmlChar* publicId,
                          const xmlChar* systemId, xmlChar* content) {
    report(self, [=](Parse& parse) {
        parse.countDeclaration();
        xmlSAX2EntityDecl(parse.context_, name, type, publicId, systemId, content);
    });
}

void Parse::declareAttribute(void* self, const xmlChar*, const xmlChar*, int, int,
                             const xmlChar* value, xmlEnumerationPtr values) {
    xmlFreeEnumeration(values);
    report(self, [=](Parse& parse) {
        parse.countDeclaration();
        if (value && ++parse.defaults_ > kMostDefaults) parse.stop("Too many default attributes");
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

// Refuses what is not declared or stands elsewhere.
xmlEntityPtr Parse::admit(const xmlChar* name, xmlEntityPtr entity) {
    if (fault_) return nullptr;
    if (!entity) {
        stop("The entity " + std::string(view(name)) + " is not declared");
    } else if (!entity->content) {
        stop("The entity " + std::string(view(name)) + " is external");
    } else if (expand(static_cast<std::size_t>(entity->length))) {
        return entity;
    }
    return nullptr;
}

xmlEntityPtr Parse::findEntity(void* self, const xmlChar* name) {
    return of(self).admit(name, xmlSAX2GetEntity(of(self).context_, name));
}

xmlEntityPtr Parse::findParameterEntity(void* self, const xmlChar* name) {
    return of(self).admit(name, xmlSAX2GetParameterEntity(of(self).context_, name));
}

void Parse::error(void* self, xmlErrorPtr error) {
    Parse& parse = of(self);
    // A namespace need not be an address: names are compared as they are written.
    const bool harmless = error->level < XML_ERR_ERROR || error->code == XML_WAR_NS_URI;
    if (harmless || parse.fault_) return;
    std::string message = error->message ? error->message : "Not well-formed";
    while (!message.empty() && (message.back() == '\n' || message.back() == ' '))
        message.pop_back();
    parse.stop(std::move(message));
}

xmlSAXHandler Parse::makeHandler() const {
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startDocument = startDocument;
    handler.startElementNs = startElement;
    handler.endElementNs = endElement;
    handler.characters = characters;
    handler.ignorableWhitespace = characters;
    handler.cdataBlock = section;
    handler.comment = comment;
    handler.processingInstruction = instruction;
    handler.internalSubset = documentType;
    handler.entityDecl = declareEntity;
    handler.attributeDecl = declareAttribute;
    handler.getEntity = findEntity;
    handler.getParameterEntity = findParameterEntity;
    handler.resolveEntity = resolve;
    handler.serror = error;
    return handler;
}

Fault Parse::run() {
    if (source_.size() > kLargestSource) return {0, 0, "The document is too large"};
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    if (!context) throw std::bad_alloc();
    context_ = context.get();
    xmlSAXHandler handler = makeHandler();
    xmlFree(context_->sax);
    context_->sax = &handler;
    context_->userData = this;
    xmlCtxtUseOptions(context_, XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_IGNORE_ENC);
    context_->replaceEntities = 1;
    // A known encoding keeps the parser from guessing one.
    context_->encoding = xmlStrdup(reinterpret_cast<const xmlChar*>("UTF-8"));
    const xmlParserInputPtr input =
        xmlNewStringInputStream(context_, reinterpret_cast<const xmlChar*>(source_.data()));
    if (!input || inputPush(context_, input) < 0) throw std::bad_alloc();
    xmlParseDocument(context_);
    if (!fault_ && !context_->wellFormed) stop("Not well-formed");
    return fault_;
}

}  // namespace

Fault parse(std::string_view utf8, TreeBuilder& builder) {
    // The parser would take a zero for the end.
    const std::size_t zero = utf8.find('\0');
    if (zero != utf8.npos) {
        Fault fault;
        fault.line = 1;
        for (const char byte : utf8.substr(0, zero))
            fault.line += byte == '\n';
        fault.message = "A zero byte";
        return fault;
    }
    return Parse(utf8, builder).run();
}

}  // namespace corvane::xml
