#include "xml/ElementWriter.h"

#include <corvane/xml/QorXMLDocument.h>

#include "xml/Access.h"
#include "xml/Attributes.h"
#include "xml/Failure.h"
#include "xml/Names.h"
#include "xml/Tree.h"

namespace corvane::xml {

std::unique_ptr<QorXMLNode> ElementWriter::make(const QorXMLDocument& document,
                                                std::u16string_view name, std::size_t attributes) {
    if (!Access::document(document)) raiseError(kErrorPointer);
    require(isQualifiedName(name) && name.find(u':') == name.npos);
    return guarded([&] {
        auto node = std::make_unique<QorXMLNode>();
        const PoolUse use;
        Pool& pool = *use.get();
        Element* element = makeElement(&pool, name);
        pool.seal(element);
        *node = Access::node(element);
        reserveAttributes(*element, attributes);
        return node;
    });
}

ElementWriter::ElementWriter(const QorXMLNode& node) : element_(required(Access::element(node))) {}

void ElementWriter::attribute(std::u16string_view name, std::u16string_view value) {
    require(isCarriable(value));
    guarded([&] { appendAttribute(element_, name, value); });
}

ElementWriter ElementWriter::child(std::u16string_view name, std::size_t attributes) {
    return guarded([&] {
        Element* made = makeElement(element_.pool(), name);
        link(element_, *made);
        reserveAttributes(*made, attributes);
        return ElementWriter(*made);
    });
}

void ElementWriter::text(std::u16string_view text) {
    require(isCarriable(text));
    if (text.empty()) return;
    guarded([&] {
        Pool* const pool = element_.pool();
        if (pool && !element_.hasContent())
            element_.setOnlyText(Text::makeIn(*pool, text, {}));
        else
            link(element_, *CharacterData::make(pool, Kind::Text, text));
    });
}

}  // namespace corvane::xml
