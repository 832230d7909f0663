#include "xml/Parser.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "system/Unicode.h"
#include "xml/Limits.h"
#include "xml/NameTable.h"
#include "xml/Names.h"
#include "xml/Namespaces.h"
#include "xml/SourceCursor.h"

namespace corvane::xml {
namespace {

// The parser sets up its global state at the first use, which is not safe on two threads at once.
[[maybe_unused]] const bool parserIsReady = (xmlInitParser(), true);

constexpr std::size_t kLargestSource = std::numeric_limits<int>::max() - 1;
// Entities may expand to this many times the source, and to a little more in a small one.
constexpr std::size_t kExpansionFactor = 10;
constexpr std::size_t kFreeExpansion = std::size_t{1} << 20;
// Each default is compared with every other attribute of each element that takes it.
constexpr int kMostDefaults = 1000;
// The parser's tables of declarations and names slow down as they fill.
constexpr int kMostDeclarations = 20'000;
constexpr std::size_t kMostNames = 100'000;
// What an attribute takes besides its name and value.
constexpr std::size_t kAttributeSyntax = 4;

#if LIBXML_VERSION >= 21200
using ParserError = const xmlError*;
#else
using ParserError = xmlErrorPtr;
#endif

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

std::u16string wide(std::string_view utf8) {
    std::u16string text;
    system::appendFromUtf8(text, utf8);
    return text;
}

// Where the parser is in the document, also while it parses the text of an entity.
struct Position {
    int line = 0;
    int column = 0;
    std::size_t offset = 0;
    const xmlChar* text = nullptr;  // What comes next, where the parser may report it before.
};

Position positionOf(xmlParserCtxtPtr context) {
    Position position;
#if LIBXML_VERSION >= 21500
    unsigned long offset = 0;
    xmlCtxtGetInputPosition(context, 0, nullptr, &position.line, &position.column, &offset);
    position.offset = offset;
#else
    if (context->inputNr < 1) return position;
    const xmlParserInputPtr input = context->inputTab[0];
    position.line = input->line;
    position.column = input->col;
    position.offset = input->consumed + static_cast<std::size_t>(input->cur - input->base);
    position.text = input->cur;
#endif
    return position;
}

// Declarations of these have no effect: the parser knows what they stand for.
bool isPredefined(std::string_view entity) {
    constexpr std::string_view kNames[] = {"lt", "gt", "amp", "quot", "apos"};
    return std::find(std::begin(kNames), std::end(kNames), entity) != std::end(kNames);
}

// Keeps what the parser says outside of a parse, as when its tables find no memory, off the
// process's standard error.
class QuietParser {
public:
    QuietParser() : handler_(xmlStructuredError), context_(xmlStructuredErrorContext) {
        xmlSetStructuredErrorFunc(nullptr, ignore);
    }
    ~QuietParser() { xmlSetStructuredErrorFunc(context_, handler_); }
    QuietParser(const QuietParser&) = delete;
    QuietParser& operator=(const QuietParser&) = delete;

private:
    static void ignore(void*, ParserError) {}

    xmlStructuredErrorFunc handler_;
    void* context_;
};

struct ContextDeleter {
    void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
};
struct DocumentDeleter {
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};

// The state of one parse. The parser calls the static functions with a pointer to it, also while it
// parses the text of an entity in a context of its own.
class Parse {
public:
    Parse(std::string_view source, TreeBuilder& builder)
        : source_(source), builder_(builder), names_(builder.pool()), cursor_(source) {}

    Fault run();

private:
    static Parse& of(void* self) { return *static_cast<Parse*>(self); }
    // Runs what a report asks for unless the parse has failed. No exception may cross the parser.
    template <typename Action>
    static void report(void* self, Action action) {
        Parse& parse = of(self);
        if (parse.fault_) return;
        const Position position = positionOf(parse.context_);
        try {
            action(parse, position);
        } catch (const std::bad_alloc&) {
            parse.stopForMemory();
        }
        parse.line_ = position.line;
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
    static void endDocumentType(void* self, const xmlChar*, const xmlChar*, const xmlChar*);
    static void declareEntity(void* self, const xmlChar* name, int type, const xmlChar* publicId,
                              const xmlChar* systemId, xmlChar* content);
    static void declareAttribute(void* self, const xmlChar*, const xmlChar* name, int, int,
                                 const xmlChar* value, xmlEnumerationPtr values);
    static void declareElement(void* self, const xmlChar*, int, xmlElementContentPtr) {
        report(self, [](Parse& parse, const Position&) { parse.countDeclaration(); });
    }
    static void declareNotation(void* self, const xmlChar* name, const xmlChar* publicId,
                                const xmlChar* systemId);
    static xmlEntityPtr findEntity(void* self, const xmlChar* name);
    static xmlEntityPtr findParameterEntity(void* self, const xmlChar* name);
    static xmlParserInputPtr resolve(void*, const xmlChar*, const xmlChar*) { return nullptr; }
    static void error(void* self, ParserError error);

    xmlSAXHandler makeHandler() const;
    void addMarkup(const Position& position, Kind kind, std::string_view text);
    void addDeclaredNamespaces(int count, const xmlChar** namespaces);
    void addAttributes(int count, int defaultCount, const xmlChar** attributes);
    bool takeAttribute(const Name* name, std::string_view value, bool expanded);
    void countNames();
    void countDeclaration();
    bool expand(std::size_t size);
    xmlEntityPtr admit(const xmlChar* name, xmlEntityPtr entity);
    std::uint32_t tagLine(const Position& position);
    void stop(std::string message);
    void stopForMemory();

    std::string_view source_;
    TreeBuilder& builder_;
    NameTable names_;
    SourceCursor cursor_;
    Fault fault_;
    bool memoryEnded_ = false;
    bool inDocumentType_ = false;
    xmlParserCtxtPtr context_ = nullptr;
    int line_ = 0;  // At the last report.
    std::size_t depth_ = 0;
    // The depths of the open elements that declare prefixes, and how many are in scope with each.
    std::vector<std::pair<std::size_t, std::size_t>> prefixes_;
    std::size_t expanded_ = 0;
    std::size_t alternatives_ = 0;
    int defaults_ = 0;
    int declarations_ = 0;
};

void Parse::stop(std::string message) {
    if (fault_) return;
    const Position position = positionOf(context_);
    fault_ = {position.line, position.column, std::move(message)};
    xmlStopParser(context_);
}

void Parse::stopForMemory() {
    memoryEnded_ = true;
    fault_.message = "Out of memory";
    xmlStopParser(context_);
}

// The line on which the start tag begins in which the parser is. Line ends need counting only where
// one has passed since the last report.
std::uint32_t Parse::tagLine(const Position& position) {
    const std::size_t start =
        depth_ == 0 ? cursor_.enterRoot(position.offset) : cursor_.passMarkup(position.offset);
    int line = position.line;
    if (line != line_ && start != source_.npos) {
        const std::string_view tag = source_.substr(start, position.offset - start);
        line -= static_cast<int>(std::count(tag.begin(), tag.end(), '\n'));
    }
    return static_cast<std::uint32_t>(line);
}

void Parse::startDocument(void* self) {
    report(self, [](Parse& parse, const Position&) {
        xmlSAX2StartDocument(parse.context_);
        const xmlDocPtr document = parse.context_->myDoc;
        if (!document) throw std::bad_alloc();
        const std::string_view version = view(document->version);
        if (version != "1.0")
            parse.stop("XML version " + std::string(version) + " is not supported");
    });
}

void Parse::startElement(void* self, const xmlChar* local, const xmlChar* prefix, const xmlChar*,
                         int namespaceCount, const xmlChar** namespaces, int attributeCount,
                         int defaultCount, const xmlChar** attributes) {
    report(self, [=](Parse& parse, const Position& position) {
        const std::uint32_t line = parse.tagLine(position);
        ++parse.depth_;
        parse.builder_.startElement(
            parse.names_.name(prefix, local), line,
            static_cast<std::size_t>(namespaceCount) + static_cast<std::size_t>(attributeCount));
        parse.countNames();
        if (namespaceCount > 0) parse.addDeclaredNamespaces(namespaceCount, namespaces);
        if (attributeCount > 0) parse.addAttributes(attributeCount, defaultCount, attributes);
        if (static_cast<std::size_t>(namespaceCount) + static_cast<std::size_t>(attributeCount) >
            kMostAttributes)
            parse.stop("Too many attributes");
    });
}

void Parse::addDeclaredNamespaces(int count, const xmlChar** namespaces) {
    const std::size_t outer = prefixes_.empty() ? 0 : prefixes_.back().second;
    prefixes_.emplace_back(depth_, outer + static_cast<std::size_t>(count));
    if (prefixes_.back().second > kMostPrefixes) {
        stop("Too many prefixes in scope");
        return;
    }
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const xmlChar** at = namespaces + 2 * i;
        const Name* name = names_.declaration(at[0]);
        // Nothing tells those apart that come from a default, which the parser does not check.
        if (!isDeclarationAllowed(name->view(), wide(view(at[1])))) {
            stop("A namespace cannot be declared as " + std::string(view(at[1])));
            return;
        }
        if (!takeAttribute(name, view(at[1]), true)) return;
    }
}

void Parse::addAttributes(int count, int defaultCount, const xmlChar** attributes) {
    // Five pointers each: local name, prefix, namespace, begin and end of the value.
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const xmlChar** at = attributes + 5 * i;
        // The last ones are those that the source leaves out.
        const bool isDefault = i >= count - defaultCount;
        if (!takeAttribute(names_.name(at[1], at[0]), view(at[3], at[4]), isDefault)) return;
    }
}

bool Parse::takeAttribute(const Name* name, std::string_view value, bool expanded) {
    if (expanded && !expand(name->view().size() + value.size() + kAttributeSyntax)) return false;
    builder_.attribute(name, value);
    return true;
}

void Parse::endElement(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    report(self, [](Parse& parse, const Position& position) {
        parse.cursor_.passMarkup(position.offset);
        if (!parse.prefixes_.empty() && parse.prefixes_.back().first == parse.depth_)
            parse.prefixes_.pop_back();
        --parse.depth_;
        parse.builder_.endElement();
    });
}

void Parse::characters(void* self, const xmlChar* text, int length) {
    report(self, [=](Parse& parse, const Position& position) {
        // The parser hands out some texts before it passes them.
        const std::size_t ahead = text == position.text ? static_cast<std::size_t>(length) : 0;
        const bool escaped = parse.cursor_.passText(position.offset, ahead);
        parse.builder_.characters(view(text, length), escaped);
    });
}

// The tree keeps nothing of what stands inside a document type.
void Parse::addMarkup(const Position& position, Kind kind, std::string_view text) {
    if (inDocumentType_) return;
    cursor_.passMarkup(position.offset);
    builder_.data(kind, text);
}

void Parse::section(void* self, const xmlChar* text, int length) {
    report(self, [=](Parse& parse, const Position& position) {
        parse.addMarkup(position, Kind::CData, view(text, length));
    });
}

void Parse::comment(void* self, const xmlChar* text) {
    report(self, [=](Parse& parse, const Position& position) {
        parse.addMarkup(position, Kind::Comment, view(text));
    });
}

void Parse::instruction(void* self, const xmlChar* target, const xmlChar* text) {
    report(self, [=](Parse& parse, const Position& position) {
        parse.names_.name(nullptr, target);
        parse.countNames();
        std::string data(view(target));
        if (text) data.append(" ").append(view(text));
        parse.addMarkup(position, Kind::Instruction, data);
    });
}

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
        xmlSAX2InternalSubset(parse.context_, name, publicId, systemId);
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
        xmlSAX2EntityDecl(parse.context_, name, type, publicId, systemId, content);
    });
}

void Parse::declareAttribute(void* self, const xmlChar*, const xmlChar* name, int, int,
                             const xmlChar* value, xmlEnumerationPtr values) {
    xmlFreeEnumeration(values);
    report(self, [=](Parse& parse, const Position&) {
        parse.countDeclaration();
        if (value && ++parse.defaults_ > kMostDefaults) parse.stop("Too many default attributes");
        if (!isQualifiedName(wide(view(name))))
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

void Parse::countNames() {
    if (names_.size() > kMostNames) stop("Too many different names");
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
    return of(self).admit(name, xmlSAX2GetEntity(of(self).context_, name));
}

// A declaration may be put together from several of these, so their parts count together.
xmlEntityPtr Parse::findParameterEntity(void* self, const xmlChar* name) {
    Parse& parse = of(self);
    const xmlEntityPtr entity = parse.admit(name, xmlSAX2GetParameterEntity(parse.context_, name));
    if (!entity) return nullptr;
    const std::string_view content = view(entity->content);
    parse.alternatives_ +=
        static_cast<std::size_t>(std::count(content.begin(), content.end(), '|'));
    if (parse.alternatives_ > kMostTokens) parse.stop("Too many tokens in parameter entities");
    return parse.fault_ ? nullptr : entity;
}

// Reports about validity concern nothing that this library promises, and they come with another
// pointer than the rest: it may be used for the others only.
void Parse::error(void* self, ParserError error) {
    if (error->domain == XML_FROM_VALID || error->domain == XML_FROM_DTD) return;
    // A namespace or an identifier that nobody follows need not be an address.
    const bool isHarmless = error->level < XML_ERR_ERROR || error->code == XML_WAR_NS_URI ||
                            error->code == XML_ERR_INVALID_URI ||
                            error->code == XML_ERR_URI_FRAGMENT;
    Parse& parse = of(self);
    if (isHarmless || parse.fault_) return;
    if (error->code == XML_ERR_NO_MEMORY) {
        parse.stopForMemory();
        return;
    }
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
    handler.externalSubset = endDocumentType;
    handler.entityDecl = declareEntity;
    handler.attributeDecl = declareAttribute;
    handler.elementDecl = declareElement;
    handler.notationDecl = declareNotation;
    handler.getEntity = findEntity;
    handler.getParameterEntity = findParameterEntity;
    handler.resolveEntity = resolve;
    handler.serror = error;
    return handler;
}

Fault Parse::run() {
    const QuietParser quiet;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    if (!context) throw std::bad_alloc();
    context_ = context.get();
    *context_->sax = makeHandler();
    context_->userData = this;
    // Every error that matters ends the parse itself: the parser must not end it for the others.
    constexpr int kOptions = XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_IGNORE_ENC |
                             XML_PARSE_NOENT | XML_PARSE_RECOVER;
    // Unlike other ways in, this one parses the bytes where they are. They end with a zero.
    const std::unique_ptr<xmlDoc, DocumentDeleter> document(xmlCtxtReadDoc(
        context_, reinterpret_cast<const xmlChar*>(source_.data()), nullptr, nullptr, kOptions));
    if (memoryEnded_) throw std::bad_alloc();
    if (!fault_ && (!document || depth_ > 0)) fault_.message = "Not well-formed";
    return fault_;
}

// The line and column of a place in the source.
Fault faultAt(std::string_view source, std::size_t offset, std::string message) {
    const std::string_view before = source.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;
    return {static_cast<std::int32_t>(1 + std::count(before.begin(), before.end(), '\n')),
            static_cast<std::int32_t>(1 + offset - lineStart), std::move(message)};
}

}  // namespace

Fault parse(std::string_view utf8, TreeBuilder& builder) {
    if (utf8.size() > kLargestSource) return {0, 0, "The document is too large"};
    // The parser would take a zero for the end, and guess an encoding from an unusual beginning.
    const std::size_t zero = utf8.find('\0');
    if (zero != utf8.npos) return faultAt(utf8, zero, "A zero byte");
    if (utf8.empty()) return {1, 1, "The document is empty"};
    if (utf8.front() != '<' && !isWhite(static_cast<unsigned char>(utf8.front())))
        return {1, 1, "The document does not begin with a tag"};
    if (const char* excess = excessIn(utf8)) return {0, 0, excess};
    return Parse(utf8, builder).run();
}

}  // namespace corvane::xml
