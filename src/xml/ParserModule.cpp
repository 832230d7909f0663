#include <libxml/SAX2.h>
#include <memory>
#include <new>
#include <string_view>

#include <corvane/base/ModuleExport.h>
#include <corvane/base/Version.h>

#include "xml/ParserLibrary.h"

// The module that links the parsing library. It has no state of its own.
namespace corvane::xml {
namespace {

/// Keeps what the parser says outside of a parse, as when its tables find no memory, off the
/// process's standard error.
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

bool read(const char* utf8, const xmlSAXHandler& handler, void* self, xmlParserCtxtPtr& context) {
    const QuietParser quiet;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> owned(xmlNewParserCtxt());
    if (!owned) throw std::bad_alloc();
    context = owned.get();
    *context->sax = handler;
    context->userData = self;
    // Every error that matters ends the parse itself: the parser must not end it for the others.
    constexpr int kOptions = XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_IGNORE_ENC |
                             XML_PARSE_NOENT | XML_PARSE_RECOVER;
    // Unlike other ways in, this one parses the bytes where they are.
    const std::unique_ptr<xmlDoc, DocumentDeleter> document(xmlCtxtReadDoc(
        context, reinterpret_cast<const xmlChar*>(utf8), nullptr, nullptr, kOptions));
    return document != nullptr;
}

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

}  // namespace
}  // namespace corvane::xml

CORVANE_MODULE_EXPORT const corvane::xml::ParserLibrary* CorvaneXmlParser(const char* version) {
    if (std::string_view(version) != corvane::kVersion) return nullptr;
    // The parser sets up its global state at the first use, which is not safe on two threads at
    // once. The caller lets in only one.
    xmlInitParser();
    static const corvane::xml::ParserLibrary library = {
        .read = corvane::xml::read,
        .positionOf = corvane::xml::positionOf,
        .stop = xmlStopParser,
        .startDocument = xmlSAX2StartDocument,
        .internalSubset = xmlSAX2InternalSubset,
        .declareEntity = xmlSAX2EntityDecl,
        .findEntity = xmlSAX2GetEntity,
        .findParameterEntity = xmlSAX2GetParameterEntity,
        .freeEnumeration = xmlFreeEnumeration,
    };
    return &library;
}
