#pragma once

#include <cstddef>
#include <libxml/parser.h>
#include <string_view>

// What the code around a parse needs of the parsing library, in any of its versions.
namespace corvane::xml {

#if LIBXML_VERSION >= 21200
using ParserError = const xmlError*;
#else
using ParserError = xmlErrorPtr;
#endif

inline const char* chars(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}
inline std::string_view view(const xmlChar* text) {
    return text ? chars(text) : "";
}
inline std::string_view view(const xmlChar* text, const xmlChar* end) {
    return {chars(text), static_cast<std::size_t>(end - text)};
}
inline std::string_view view(const xmlChar* text, int length) {
    return {chars(text), static_cast<std::size_t>(length)};
}

/// Where the parser is in the document, also while it parses the text of an entity.
struct Position {
    int line = 0;
    int column = 0;
    std::size_t offset = 0;
    const xmlChar* text = nullptr;  // What comes next, where the parser may report it before.
};

inline Position positionOf(xmlParserCtxtPtr context) {
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

}  // namespace corvane::xml
