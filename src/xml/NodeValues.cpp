#include <algorithm>
#include <memory>
#include <string>

#include <corvane/xml/QorXMLNode.h>

#include "system/Locale.h"
#include "text/Scan.h"
#include "xml/Attributes.h"
#include "xml/Failure.h"
#include "xml/Names.h"
#include "xml/Namespaces.h"
#include "xml/TextContent.h"
#include "xml/Tree.h"

using corvane::text::ScanResult;
using corvane::xml::Attribute;
using corvane::xml::CharacterData;
using corvane::xml::Element;
using corvane::xml::Kind;
using corvane::xml::require;
using corvane::xml::required;

namespace {

// Runs one of the scans over the text of an element.
template <typename Number, typename Scan>
bool scanText(const Element* element, Number& value, Scan scan) {
    if (!element) return true;
    std::u16string buffer;
    return scan(corvane::xml::textOf(*element, buffer), value) != ScanResult::NoMatch;
}

bool scanInt(const Element* element, std::int32_t& value) {
    return scanText(element, value, corvane::text::scanInt32);
}

}  // namespace

bool QorXMLNode::GetAttributeValue(CStringW name, CStringW& value) const {
    const Attribute* found = corvane::xml::findAttribute(required(m_pElement), name);
    if (found) value = CStringW(found->value.view());
    return found;
}

bool QorXMLNode::GetAttributeValue1(const char* name, char*& value) const {
    CStringW wide;
    if (!GetAttributeValue(CStringW(name), wide)) return false;
    const std::string narrow = corvane::system::narrow(wide);
    auto* copy = new char[narrow.size() + 1];
    std::copy_n(narrow.c_str(), narrow.size() + 1, copy);
    value = copy;
    return true;
}

bool QorXMLNode::SetAttributeValue(CStringW name, CStringW value) {
    const bool exists = corvane::xml::findAttribute(required(m_pElement), name);
    return exists && AddAttribute(std::move(name), std::move(value));
}

bool QorXMLNode::AddAttribute(CStringW name, CStringW value) {
    Element& element = required(m_pElement);
    require(corvane::xml::isQualifiedName(name) && corvane::xml::isCarriable(value) &&
            corvane::xml::isAttributeAllowed(element, name, value));
    corvane::xml::setAttribute(element, name, value);
    return true;
}

bool QorXMLNode::AddAttribute1(const char* name, const char* value) {
    return AddAttribute(CStringW(name), CStringW(value));
}

CStringW QorXMLNode::GetNodeValue() const {
    if (!m_pElement) return {};
    std::u16string buffer;
    const std::u16string_view text = corvane::xml::textOf(*m_pElement, buffer);
    return text.data() == buffer.data() ? CStringW(std::move(buffer)) : CStringW(text);
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
    return scanText(m_pElement, value, corvane::text::scanDouble);
}

bool QorXMLNode::GetNodeValueInBool(bool& value) const {
    std::u16string buffer;
    value = corvane::xml::textOf(required(m_pElement), buffer) != u"0";
    return true;
}

void QorXMLNode::SetNodeValue(CStringW text) {
    Element& element = required(m_pElement);
    require(corvane::xml::isCarriable(text));
    std::unique_ptr<CharacterData> node;
    if (!text.IsEmpty()) {
        node = std::make_unique<CharacterData>(Kind::Text);
        node->text = corvane::xml::Text::own(text);
    }
    corvane::xml::clearContent(element);
    if (node) corvane::xml::link(element, *node.release());
}
