#pragma once

#include <cstddef>
#include <libxml/parser.h>
#include <string>
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

/// The operations of the parsing library that a parse uses. A module of its own links that library
/// and hands them out, so that only a process with a document that needs them loads it: its start
/// would take longer than all the rest of this library's.
struct ParserLibrary {
    /// Parses a text that ends with a zero. `context` is set as long as the handler is called.
    /// False when there is no document.
    bool (*read)(const char* utf8, const xmlSAXHandler& handler, void* self,
                 xmlParserCtxtPtr& context);
    Position (*positionOf)(xmlParserCtxtPtr context);
    void (*stop)(xmlParserCtxtPtr context);
    // What the handler leaves to the library's own.
    startDocumentSAXFunc startDocument;
    internalSubsetSAXFunc internalSubset;
    entityDeclSAXFunc declareEntity;
    getEntitySAXFunc findEntity;
    getParameterEntitySAXFunc findParameterEntity;
    void (*freeEnumeration)(xmlEnumerationPtr values);
};

/// The module's function that gives the operations. Null when `version` is not the module's own:
/// libraries of several versions may lie beside one module, and only its own knows their order.
using ParserLibraryFunction = const ParserLibrary* (*)(const char* version);
inline constexpr const char* kParserLibraryName = "CorvaneXmlParser";

/// The operations, which are there until this library is unloaded. Null when the module is missing,
/// won't load or is of another version: `fault` tells which.
const ParserLibrary* parserLibrary(std::string& fault);

}  // namespace corvane::xml
