#include <utility>

#include <corvane/rules/ParameterXML.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/ParameterIndex.h"
#include "rules/ParameterNames.h"
#include "rules/RequiredElement.h"
#include "text/Scan.h"

namespace corvane {
namespace {

namespace name = rules::name;

CStringW decimal(std::int32_t number) {
    CStringW text;
    text.Format(u"%d", number);
    return text;
}

CStringW attributeName(int number) {
    CStringW text(name::kAttribute);
    text += decimal(number);
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

ParameterWriter::ParameterWriter(const Head& head)
    : element_(g_pXMLDoc->CreateNode(name::kParameter)) {
    element_->AddAttribute(name::kName, head.name);
    element_->AddAttribute(name::kNumber, decimal(head.number));
    element_->AddAttribute(name::kStatus, head.status ? name::kTrue : name::kFalse);
    appendChild(name::kOperator, decimal(head.op));
    appendChild(name::kParameterType, decimal(head.paramType));
}

ParameterWriter::~ParameterWriter() = default;

void ParameterWriter::appendChild(std::u16string_view childName, CStringW text) {
    const std::unique_ptr<QorXMLNode> child(element_->AppendNode(CStringW(childName)));
    child->SetNodeValue(std::move(text));
}

void ParameterWriter::addText(CStringW text) {
    appendChild(name::kValue, std::move(text));
}

void ParameterWriter::addRecord(const QORCustomRuleData& record) {
    if (record.GetSize() == 0) return;
    const std::unique_ptr<QorXMLNode> value(element_->AppendNode(CStringW(name::kValue)));
    int number = 0;
    for (const CStringW& text : record)
        value->AddAttribute(attributeName(++number), text);
}

QorXMLNode* ParameterWriter::finish(const CStringW& remarks) {
    appendChild(name::kRemarks, remarks);
    return element_.release();
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
    static const CStringW names[name::kAttributesRead] = {attributeName(1), attributeName(2),
                                                          attributeName(3), attributeName(4)};
    auto record = std::make_unique<QORCustomRuleData>();
    for (const CStringW& attribute : names) {
        if (const auto text = xml::ElementView(value_).attribute(attribute)) record->Add(*text);
    }
    return record;
}

}  // namespace corvane
