#include "xml/ElementWriter.h"

#include <corvane/xml/QorXMLDocument.h>

#include "xml/Access.h"
#include "xml/Attributes.h"
#include "xml/Failure.h"
#include "xml/Names.h"
#include "xml/Tree.h"

namespace corvane::xml {

std::unique_ptr<QorXMLNode> ElementWriter::make(const QorXMLDocument& document,
                                                std::u16string_view name) {
    if (!Access::document(document)) raiseError(kErrorPointer);
    require(isQualifiedName(name) && name.find(u':') == name.npos);
    auto node = std::make_unique<QorXMLNode>();
    const PoolUse pool;
    auto* element = makeNode<Element>(pool.get(), Kind::Element);
    *node = Access::node(element);  // From here on nothing that fails leaves the element behind.
    element->name = makeText(pool.get(), name);
    return node;
}

ElementWriter::ElementWriter(const QorXMLNode& node) : element_(required(Access::element(node))) {}

void ElementWriter::attribute(std::u16string_view name, std::u16string_view value) {
    require(isCarriable(value));
    noteChange(element_);
    appendAttribute(element_, makeText(element_.pool, name), makeText(element_.pool, value));
}

ElementWriter ElementWriter::child(std::u16string_view name) {
    auto* made = makeNode<Element>(element_.pool, Kind::Element);
    link(element_, *made);
    made->name = makeText(element_.pool, name);
    return ElementWriter(*made);
}

void ElementWriter::text(std::u16string_view text) {
    require(isCarriable(text));
    if (text.empty()) return;
    auto* made = makeNode<CharacterData>(element_.pool, Kind::Text);
    link(element_, *made);
    made->text = makeText(element_.pool, text);
}

}  // namespace corvane::xml
