#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "xml/Failure.h"
#include "xml/NameTable.h"
#include "xml/ParserLibrary.h"
#include "xml/SourceCursor.h"
#include "xml/TreeBuilder.h"

namespace corvane::xml {

/// The state of one parse. The parser calls the static functions with a pointer to it, also while
/// it parses the text of an entity in a context of its own.
class Parse {
public:
    Parse(const ParserLibrary& library, std::string_view source, TreeBuilder& builder)
        : library_(library),
          source_(source),
          builder_(builder),
          names_(builder.pool()),
          cursor_(source) {}

    Fault run();

private:
    static Parse& of(void* self) { return *static_cast<Parse*>(self); }
    // Runs what a report asks for unless the parse has failed. No exception may cross the parser.
    template <typename Action>
    static void report(void* self, Action action) {
        Parse& parse = of(self);
        if (parse.fault_) return;
        const Position position = parse.library_.positionOf(parse.context_);
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

    const ParserLibrary& library_;
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

}  // namespace corvane::xml
