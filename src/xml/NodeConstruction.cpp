#include <memory>

#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "xml/Access.h"
#include "xml/Construction.h"
#include "xml/Failure.h"

using corvane::xml::Access;
using corvane::xml::Element;
using corvane::xml::raiseError;
using corvane::xml::required;

namespace {

// The element of a node that is an argument.
Element& argument(const QorXMLNode& node) {
    Element* element = Access::element(node);
    if (!element) raiseError(corvane::kErrorInvalidArgument);
    return *element;
}

}  // namespace

QorXMLNode* QorXMLNode::AppendNode(CStringW name) {
    return AppendNode(std::move(name), g_pXMLDoc);
}

QorXMLNode* QorXMLNode::AppendNode(CStringW name, QorXMLDocument* document) {
    if (!document) return nullptr;
    if (!Access::document(*document)) raiseError(corvane::kErrorPointer);
    Element& parent = required(m_pElement);
    auto node = Access::newNode(corvane::xml::makeElement(name, &parent));
    corvane::xml::appendElement(parent, *Access::element(*node));
    return node.release();
}

void QorXMLNode::AppendNode(QorXMLNode* node) {
    if (!node) return;
    Element& parent = required(m_pElement);
    corvane::xml::appendElement(parent, argument(*node));
}

bool QorXMLNode::RemoveChild(QorXMLNode* node) {
    if (!node) return false;
    const Element& parent = required(m_pElement);
    Element& child = argument(*node);
    if (child.parent != &parent) raiseError(corvane::kErrorInvalidArgument);
    corvane::xml::removeElement(child);
    return true;
}
