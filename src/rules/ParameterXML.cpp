#include <algorithm>
#include <array>
#include <tuple>
#include <vector>

#include <corvane/rules/ParameterXML.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/ParameterElement.h"
#include "rules/RuleElement.h"
#include "text/Numbers.h"
#include "xml/ElementWriter.h"

namespace corvane::rules {

std::optional<QorLong> parameterNumber(xml::ElementView parameter) {
    const auto text = parameter.attribute(name::kNumber);
    if (!text) return std::nullopt;
    std::int32_t number = 0;
    text::scanInt32(*text, number);
    return number;
}

xml::ElementView findParameter(xml::ElementView parent, QorLong number) {
    for (const xml::ElementView parameter : xml::ChildrenNamed(parent, name::kParameter)) {
        if (parameterNumber(parameter) == number) return parameter;
    }
    return {};
}

// Sorting, unlike hashing, stays fast for whatever numbers a hostile file holds; and rules are
// written in the order of their parameters, which is mostly that of the numbers.
ParameterIndex::ParameterIndex(xml::ElementView parent) {
    constexpr std::size_t kUsual = 16;
    entries_.reserve(kUsual);
    for (const xml::ElementView parameter : xml::ChildrenNamed(parent, name::kParameter)) {
        if (const auto number = parameterNumber(parameter)) {
            entries_.push_back({*number, static_cast<std::uint32_t>(entries_.size()), parameter});
        }
    }
    const auto key = [](const Entry& entry) { return std::tuple(entry.number, entry.order); };
    const auto before = [key](const Entry& a, const Entry& b) { return key(a) < key(b); };
    if (!std::is_sorted(entries_.begin(), entries_.end(), before))
        std::sort(entries_.begin(), entries_.end(), before);
}

xml::ElementView ParameterIndex::find(QorLong number) const {
    const auto entry =
        std::lower_bound(entries_.begin(), entries_.end(), number,
                         [](const Entry& e, QorLong wanted) { return e.number < wanted; });
    return entry != entries_.end() && entry->number == number ? entry->element : xml::ElementView();
}

}  // namespace corvane::rules

namespace corvane {
namespace {

namespace name = rules::name;

std::u16string attributeName(int number) {
    std::u16string text(name::kAttribute);
    text += text::printInt32(number);
    return text;
}

// The number in a child's text; 0 without the child or without a number in it.
std::int32_t childNumber(xml::ElementView parameter, std::u16string_view childName) {
    std::int32_t number = 0;
    std::u16string buffer;
    if (const xml::ElementView child = parameter.child(childName))
        text::scanInt32(child.text(buffer), number);
    return number;
}

}  // namespace

bool ParameterWriter::canWrite() {
    return g_pXMLDoc != nullptr;
}

ParameterWriter::ParameterWriter()
    : free_(xml::ElementWriter::make(*g_pXMLDoc, name::kParameter)),
      element_(xml::ElementWriter(*free_).element()) {}

ParameterWriter::ParameterWriter(const QorXMLNode& parent)
    : element_(xml::ElementWriter(parent).child(name::kParameter).element()) {}

ParameterWriter::~ParameterWriter() = default;

void ParameterWriter::addHead(const Head& head) {
    xml::ElementWriter parameter(element_);
    parameter.attribute(name::kName, head.name);
    parameter.attribute(name::kNumber, text::printInt32(head.number));
    parameter.attribute(name::kStatus, head.status ? name::kTrue : name::kFalse);
    parameter.child(name::kOperator).text(text::printInt32(head.op));
    parameter.child(name::kParameterType).text(text::printInt32(head.paramType));
}

void ParameterWriter::addText(std::u16string_view text) {
    xml::ElementWriter(element_).child(name::kValue).text(text);
}

void ParameterWriter::addRecord(const QORCustomRuleData& record) {
    if (record.GetSize() == 0) return;
    xml::ElementWriter value = xml::ElementWriter(element_).child(name::kValue);
    std::u16string attribute(name::kAttribute);
    int number = 0;
    for (const CStringW& text : record) {
        attribute.resize(name::kAttribute.size());
        attribute += text::printInt32(++number);
        value.attribute(attribute, text);
    }
}

void ParameterWriter::addRemarks(const CStringW& remarks) {
    xml::ElementWriter(element_).child(name::kRemarks).text(remarks);
}

QorXMLNode* ParameterWriter::release() {
    return free_.release();
}

ParameterReader::ParameterReader(const QorXMLNode& parent, QorLong number)
    : parameter_(rules::findParameter(rules::requiredElement(parent), number).element()) {}

QorOperator_e ParameterReader::readOperator() const {
    return QorOperator_e(childNumber(xml::ElementView(parameter_), name::kOperator));
}

QorParamType_e ParameterReader::readParamType() const {
    return QorParamType_e(childNumber(xml::ElementView(parameter_), name::kParameterType));
}

bool ParameterReader::readStatus() const {
    return xml::ElementView(parameter_).attribute(name::kStatus) != name::kFalse;
}

bool ParameterReader::nextValue() {
    value_ = (value_ ? xml::ElementView(value_).sibling(name::kValue)
                     : xml::ElementView(parameter_).child(name::kValue))
                 .element();
    return value_ != nullptr;
}

std::u16string_view ParameterReader::text() {
    return xml::ElementView(value_).text(buffer_);
}

std::unique_ptr<QORCustomRuleData> ParameterReader::record() const {
    static const std::u16string names[name::kAttributesRead] = {attributeName(1), attributeName(2),
                                                                attributeName(3), attributeName(4)};
    std::array<std::u16string_view, name::kAttributesRead> texts;
    auto end = texts.begin();
    for (const std::u16string& attribute : names) {
        if (const auto text = xml::ElementView(value_).attribute(attribute)) *end++ = *text;
    }
    return std::make_unique<QORCustomRuleData>(std::vector<CStringW>(texts.begin(), end));
}

}  // namespace corvane
