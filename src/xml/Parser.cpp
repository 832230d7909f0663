#include "xml/Parser.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "system/Unicode.h"
#include "xml/Limits.h"
#include "xml/Namespaces.h"
#include "xml/Parse.h"
#include "xml/PlainParser.h"

namespace corvane::xml {
namespace {

constexpr std::size_t kLargestSource = std::numeric_limits<int>::max() - 1;
// The parser's table of names slows down as it fills.
constexpr std::size_t kMostNames = 100'000;
// What an attribute takes besides its name and value.
constexpr std::size_t kAttributeSyntax = 4;

// The line and column of a place in the source.
Fault faultAt(std::string_view source, std::size_t offset, std::string message) {
    const std::string_view before = source.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;
    return {static_cast<std::int32_t>(1 + std::count(before.begin(), before.end(), '\n')),
            static_cast<std::int32_t>(1 + offset - lineStart), std::move(message)};
}

}  // namespace

void Parse::stop(std::string message) {
    if (fault_) return;
    const Position position = library_.positionOf(context_);
    fault_ = {position.line, position.column, std::move(message)};
    library_.stop(context_);
}

void Parse::stopForMemory() {
    memoryEnded_ = true;
    fault_.message = "Out of memory";
    library_.stop(context_);
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
        parse.library_.startDocument(parse.context_);
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
        if (!isDeclarationAllowed(name->view(), system::fromUtf8(view(at[1])))) {
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
    // The source ends with a zero, so it is parsed where it is.
    const bool isRead = library_.read(source_.data(), makeHandler(), this, context_);
    if (memoryEnded_) throw std::bad_alloc();
    if (!fault_ && (!isRead || depth_ > 0)) fault_.message = "Not well-formed";
    return fault_;
}

void Parse::countNames() {
    if (names_.size() > kMostNames) stop("Too many different names");
}

namespace {

template <typename Parse>
Element* built(Parse parse) {
    TreeBuilder builder;
    return parse(builder) ? builder.take() : nullptr;
}

}  // namespace

Fault parse(std::string_view utf8, Element*& tree) {
    if (utf8.size() > kLargestSource) return {0, 0, "The document is too large"};
    // The parser would take a zero for the end, and guess an encoding from an unusual beginning.
    const std::size_t zero = utf8.find('\0');
    if (zero != utf8.npos) return faultAt(utf8, zero, "A zero byte");
    if (utf8.empty()) return {1, 1, "The document is empty"};
    if (utf8.front() != '<' && !isWhite(static_cast<unsigned char>(utf8.front())))
        return {1, 1, "The document does not begin with a tag"};
    tree = built([&](TreeBuilder& builder) { return parsePlain(utf8, builder); });
    if (tree) return {};
    if (const char* excess = excessIn(utf8)) return {0, 0, excess};
    Fault fault;
    const ParserLibrary* library = parserLibrary(fault.message);
    if (!library) return fault;
    tree = built([&](TreeBuilder& builder) {
        fault = Parse(*library, utf8, builder).run();
        return !fault;
    });
    return fault;
}

}  // namespace corvane::xml
