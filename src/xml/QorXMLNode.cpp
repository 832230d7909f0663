#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>
#include <corvane/xml/XMLFault.h>

#include "system/Unicode.h"
#include "text/Numbers.h"
#include "xml/Access.h"
#include "xml/Attributes.h"
#include "xml/Edits.h"
#include "xml/Failure.h"
#include "xml/Query.h"
#include "xml/Serializer.h"
#include "xml/TextContent.h"
#include "xml/Tree.h"

using corvane::text::ScanResult;
using corvane::xml::Access;
using corvane::xml::Attribute;
using corvane::xml::Element;
using corvane::xml::guarded;
using corvane::xml::Matches;
using corvane::xml::Node;
using corvane::xml::raiseError;
using corvane::xml::required;

namespace {

// The element of a node that is an argument.
Element& argument(const QorXMLNode& node) {
    Element* element = Access::element(node);
    if (!element) raiseError(corvane::kErrorInvalidArgument);
    return *element;
}

std::unique_ptr<QorXMLNode> firstMatch(const Element& element, const CStringW& query,
                                       bool onlyElement) {
    const std::optional<Matches> found = corvane::xml::selectFirst(element, query);
    if (!found) raiseError(corvane::kErrorFail);
    if (found->empty() || (onlyElement && !found->front())) return nullptr;
    return Access::newNode(found->front());
}

// Runs one of the scans over the text of an element.
template <typename Number, typename Scan>
bool scanText(const Element* element, Number& value, Scan scan) {
    if (!element) return true;
    std::u16string buffer;
    return scan(corvane::xml::textOf(*element, buffer), value) != ScanResult::NoMatch;
}

bool scanInt(const Element* element, std::int32_t& value) {
    return guarded([&] { return scanText(element, value, corvane::text::scanInt32); });
}

}  // namespace

QorXMLNode corvane::xml::Access::node(const Node* node) {
    QorXMLNode result;
    if (node && node->isElement()) {
        // Code with a view of an element may hold it; the tree's constness is the view's alone.
        result.m_pElement = const_cast<Element*>(corvane::xml::asElement(node));
        corvane::xml::hold(result.m_pElement);
    }
    return result;
}

std::unique_ptr<QorXMLNode> corvane::xml::Access::newNode(const Node* node) {
    return std::make_unique<QorXMLNode>(Access::node(node));
}

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
    return guarded([&] {
        const std::optional<Matches> found = corvane::xml::select(required(m_pElement), query);
        if (!found) raiseError(corvane::kErrorFail);
        auto list = std::make_unique<QorXMLNodeList>();
        for (const Node* match : *found)
            Access::append(*list, match);
        return list.release();
    });
}

QorXMLNodeList* QorXMLNode::GetNodeList1(const char* query) const {
    return guarded([&] { return GetNodeList(CStringW(query)); });
}

QorXMLNodeList* QorXMLNode::GetChildNodes() const {
    return guarded([&] {
        auto list = std::make_unique<QorXMLNodeList>();
        const Element& element = required(m_pElement);
        if (element.onlyText()) Access::append(*list, nullptr);  // As for each other text.
        for (const Node* at = element.firstChild(); at; at = at->next)
            Access::append(*list, at);
        return list.release();
    });
}

QorXMLNode* QorXMLNode::GetNodeFromXPath(CStringW query) const {
    return guarded([&] { return firstMatch(required(m_pElement), query, false).release(); });
}

QorXMLNode* QorXMLNode::SelectSingleNode(CStringW query) const {
    return guarded([&] { return firstMatch(required(m_pElement), query, true).release(); });
}

QorXMLNode* QorXMLNode::GetParentNode() const {
    const Element* parent = required(m_pElement).parent;
    if (!parent || !parent->isElement()) return nullptr;
    return guarded([&] { return Access::newNode(parent).release(); });
}

QorXMLNode* QorXMLNode::CloneNode() const {
    return guarded([&] {
        auto node = std::make_unique<QorXMLNode>();
        *node = Access::node(corvane::xml::clone(required(m_pElement)));
        return node.release();
    });
}

CStringW QorXMLNode::GetNodeName() const {
    return guarded([&] { return CStringW(m_pElement ? m_pElement->name->local() : u""); });
}

bool QorXMLNode::GetAttributeValue(CStringW name, CStringW& value) const {
    return guarded([&] {
        const Attribute* found = corvane::xml::findAttribute(required(m_pElement), name);
        if (found) value = CStringW(found->value());
        return found != nullptr;
    });
}

bool QorXMLNode::GetAttributeValue1(const char* name, char*& value) const {
    return guarded([&] {
        CStringW wide;
        if (!GetAttributeValue(CStringW(name), wide)) return false;
        const std::string narrow = corvane::system::narrow(wide);
        auto* copy = new char[narrow.size() + 1];
        std::copy_n(narrow.c_str(), narrow.size() + 1, copy);
        value = copy;
        return true;
    });
}

bool QorXMLNode::SetAttributeValue(CStringW name, CStringW value) {
    return guarded([&] {
        Element& element = required(m_pElement);
        if (!corvane::xml::findAttribute(element, name)) return false;
        corvane::xml::changeAttribute(element, name, value);
        return true;
    });
}

bool QorXMLNode::AddAttribute(CStringW name, CStringW value) {
    guarded([&] { corvane::xml::changeAttribute(required(m_pElement), name, value); });
    return true;
}

bool QorXMLNode::AddAttribute1(const char* name, const char* value) {
    return guarded([&] { return AddAttribute(CStringW(name), CStringW(value)); });
}

CStringW QorXMLNode::GetNodeValue() const {
    if (!m_pElement) return {};
    return guarded([&] {
        std::u16string buffer;
        const std::u16string_view text = corvane::xml::textOf(*m_pElement, buffer);
        return text.data() == buffer.data() ? CStringW(std::move(buffer)) : CStringW(text);
    });
}

bool QorXMLNode::GetNodeValueInCString(CStringW& value) const {
    value = GetNodeValue();
    return true;
}

bool QorXMLNode::GetNodeValueInInt(int& value) const {
    return scanInt(m_pElement, value);
}

bool QorXMLNode::GetNodeValueInLong(QorLong& value) const {
    std::int32_t number = value;
    const bool result = scanInt(m_pElement, number);
    value = number;
    return result;
}

bool QorXMLNode::GetNodeValueInDouble(double& value) const {
    return guarded([&] { return scanText(m_pElement, value, corvane::text::scanDouble); });
}

bool QorXMLNode::GetNodeValueInBool(bool& value) const {
    return guarded([&] {
        std::u16string buffer;
        value = corvane::xml::textOf(required(m_pElement), buffer) != u"0";
        return true;
    });
}

void QorXMLNode::SetNodeValue(CStringW text) {
    guarded([&] { corvane::xml::changeText(required(m_pElement), text); });
}

CStringW QorXMLNode::GetXML() const {
    if (!m_pElement) return {};
    return guarded([&] { return CStringW(corvane::xml::serialized(*m_pElement)); });
}

QorXMLNode* QorXMLNode::AppendNode(CStringW name) {
    return AppendNode(std::move(name), g_pXMLDoc);
}

QorXMLNode* QorXMLNode::AppendNode(CStringW name, QorXMLDocument* document) {
    if (!document) return nullptr;
    if (!Access::document(*document)) raiseError(corvane::kErrorPointer);
    return guarded([&] {
        Element& parent = required(m_pElement);
        auto node = std::make_unique<QorXMLNode>();
        *node = Access::node(corvane::xml::makeFreeElement(name, &parent));
        corvane::xml::appendElement(parent, *Access::element(*node));
        return node.release();
    });
}

void QorXMLNode::AppendNode(QorXMLNode* node) {
    if (!node) return;
    guarded([&] {
        Element& parent = required(m_pElement);
        corvane::xml::appendElement(parent, argument(*node));
    });
}

bool QorXMLNode::RemoveChild(QorXMLNode* node) {
    if (!node) return false;
    return guarded([&] {
        const Element& parent = required(m_pElement);
        Element& child = argument(*node);
        if (child.parent != &parent) raiseError(corvane::kErrorInvalidArgument);
        corvane::xml::removeElement(child);
        return true;
    });
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
