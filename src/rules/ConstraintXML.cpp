#include <memory>

#include <corvane/rules/CQORConstraint.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/IllegalParameter.h"
#include "rules/ParameterNames.h"
#include "rules/RequiredElement.h"
#include "rules/RuleElement.h"
#include "xml/ElementWriter.h"

namespace rules = corvane::rules;

namespace {

// Part of the rule file's format, the same in every language.
constexpr std::u16string_view kConstraint = u"Constraint";
constexpr std::u16string_view kType = u"Type";
constexpr std::u16string_view kValue = u"Value";
constexpr std::u16string_view kStatus = u"Status";
constexpr std::u16string_view kMaterial = u"Material";

}  // namespace

void CQORConstraint::PopulateFromXML(QorXMLNode*& node) {
    SetType(node);
    SetValue(node);
    SetStatus(node);
    PopulateParameters(node);
}

void CQORConstraint::SetType(QorXMLNode*& node) {
    if (!node) return;
    const auto type = rules::requiredElement(*node).attribute(kType);
    if (type && CStringW(*type).CompareNoCase(kMaterial) == 0) m_Type = QORConstraint_Material;
}

void CQORConstraint::SetValue(QorXMLNode*& node) {
    if (!node) return;
    if (const auto value = rules::requiredElement(*node).attribute(kValue)) m_csValue = *value;
}

void CQORConstraint::SetStatus(QorXMLNode*& node) {
    if (!node) return;
    if (const auto status = rules::requiredElement(*node).attribute(kStatus))
        m_bStatus = *status == rules::name::kTrue;
}

void CQORConstraint::PopulateParameters(QorXMLNode*& node) {
    if (!node) return;
    if (!rules::readParameters(rules::requiredElement(*node), m_Parameters, Type_CustomRuleData))
        rules::reportIllegalParameter();
}

QorXMLNode* CQORConstraint::GetXMLNode() {
    if (!g_pXMLDoc) return nullptr;
    auto element = corvane::xml::ElementWriter::make(*g_pXMLDoc, kConstraint);
    corvane::xml::ElementWriter constraint(*element);
    constraint.attribute(kType, m_Type == QORConstraint_Material ? kMaterial : u"");
    constraint.attribute(kValue, m_csValue);
    constraint.attribute(kStatus, m_bStatus ? rules::name::kTrue : rules::name::kFalse);
    rules::writeParameters(*element, m_Parameters, Type_CustomRuleData,
                           rules::reportIllegalParameter);
    return element.release();
}
