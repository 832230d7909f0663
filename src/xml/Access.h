#pragma once

#include <memory>

#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>
#include <corvane/xml/QorXMLNodeList.h>

#include "xml/Node.h"

namespace corvane::xml {

/// What the public classes keep to themselves, for the rest of this layer.
struct Access {
    static Element* element(const QorXMLNode& node) { return node.m_pElement; }
    static Document* document(const QorXMLDocument& document) { return document.m_pDocument; }

    /// A node for the element, or an empty one for null and for what is no element.
    static QorXMLNode node(const Node* node);
    static std::unique_ptr<QorXMLNode> newNode(const Node* node);
    static void append(QorXMLNodeList& list, const Node* node) { list.append(Access::node(node)); }
};

}  // namespace corvane::xml
