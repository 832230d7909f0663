#include <utility>

#include <corvane/xml/QorXMLNode.h>
#include <corvane/xml/XMLFault.h>

#include "xml/Access.h"
#include "xml/Failure.h"
#include "xml/Names.h"
#include "xml/Query.h"
#include "xml/Serializer.h"
#include "xml/Tree.h"

using corvane::xml::Access;
using corvane::xml::Element;
using corvane::xml::Matches;
using corvane::xml::Node;
using corvane::xml::raiseError;
using corvane::xml::required;

namespace {

Matches accepted(std::optional<Matches> matches) {
    if (!matches) raiseError(corvane::kErrorFail);
    return *std::move(matches);
}

}  // namespace

QorXMLNode::QorXMLNode(const QorXMLNode& other) noexcept : m_pElement(other.m_pElement) {
    corvane::xml::hold(m_pElement);
}

QorXMLNode& QorXMLNode::operator=(const QorXMLNode& other) noexcept {
    QorXMLNode copy(other);
    std::swap(m_pElement, copy.m_pElement);
    return *this;
}

QorXMLNode::~QorXMLNode() {
    corvane::xml::release(m_pElement);
}

QorXMLNodeList* QorXMLNode::GetNodeList(CStringW query) const {
    auto list = std::make_unique<QorXMLNodeList>();
    for (const Node* match : accepted(corvane::xml::select(required(m_pElement), query)))
        Access::append(*list, match);
    return list.release();
}

QorXMLNodeList* QorXMLNode::GetNodeList1(const char* query) const {
    return GetNodeList(CStringW(query));
}

QorXMLNodeList* QorXMLNode::GetChildNodes() const {
    auto list = std::make_unique<QorXMLNodeList>();
    for (const Node* at = required(m_pElement).firstChild; at; at = at->next)
        Access::append(*list, at);
    return list.release();
}

QorXMLNode* QorXMLNode::GetNodeFromXPath(CStringW query) const {
    const Matches found = accepted(corvane::xml::selectFirst(required(m_pElement), query));
    return found.empty() ? nullptr : Access::newNode(found.front()).release();
}

QorXMLNode* QorXMLNode::SelectSingleNode(CStringW query) const {
    const Matches found = accepted(corvane::xml::selectFirst(required(m_pElement), query));
    return found.empty() || !found.front() ? nullptr : Access::newNode(found.front()).release();
}

QorXMLNode* QorXMLNode::GetParentNode() const {
    const Element* parent = required(m_pElement).parent;
    return parent && parent->isElement() ? Access::newNode(parent).release() : nullptr;
}

QorXMLNode* QorXMLNode::CloneNode() const {
    return Access::newNode(corvane::xml::clone(required(m_pElement))).release();
}

CStringW QorXMLNode::GetNodeName() const {
    return m_pElement ? corvane::xml::localNameOf(m_pElement->name.view()) : u"";
}

CStringW QorXMLNode::GetXML() const {
    return m_pElement ? corvane::xml::serialized(*m_pElement) : std::u16string();
}

void QorXMLNode::DeleteNodeList(QorXMLNodeList*& list) {
    delete std::exchange(list, nullptr);
}

void QorXMLNode::DeleteNode(QorXMLNode*& node) {
    delete std::exchange(node, nullptr);
}

QorLong corvane::XMLLine(const QorXMLNode& node) {
    const Element* element = Access::element(node);
    return element ? static_cast<QorLong>(element->line) : 0;
}
