#include <algorithm>
#include <memory>
#include <vector>

#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/CQorParameter.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/ParameterElement.h"
#include "rules/RuleElement.h"
#include "rules/Storages.h"
#include "xml/ElementWriter.h"

namespace rules = corvane::rules;

namespace {

// Part of the rule file's format, the same in every language.
constexpr std::u16string_view kType = u"Type";
constexpr std::u16string_view kValue = u"Value";
constexpr std::u16string_view kStatus = u"Status";
constexpr std::u16string_view kMaterial = u"Material";

using Storages = CQorArray<CQorParamStorage*>;

// A storage of illegal kind owns nothing, so its clone may hold the same pointer.
std::unique_ptr<CQorParamStorage> cloneStorage(const CQorParamStorage& source) {
    auto clone = std::make_unique<CQorParamStorage>();
    void* parameter = source.m_pParameter;
    rules::visitParameter(&source, [&]<typename T>(const CQorParameter<T>& original) {
        auto copy = std::make_unique<CQorParameter<T>>(CStringW(), QorOperator_Default,
                                                       QorParamType_Plain, false);
        *copy = original;
        copy->m_lType = original.m_lType;
        copy->m_lMode = original.m_lMode;
        parameter = copy.release();
    });
    *clone = source;
    clone->m_pParameter = parameter;
    return clone;
}

Storages clonesOf(const Storages& storages) {
    std::vector<std::unique_ptr<CQorParamStorage>> owned;
    for (const CQorParamStorage* const storage : storages)
        owned.push_back(storage ? cloneStorage(*storage) : nullptr);
    Storages clones(storages);
    std::transform(owned.begin(), owned.end(), clones.begin(),
                   [](auto& clone) { return clone.release(); });
    return clones;
}

}  // namespace

CQORConstraint::CQORConstraint(QORConstraintType_e type, const CStringW& value, bool status)
    : m_Type(type), m_csValue(value), m_bStatus(status) {}

CQORConstraint::CQORConstraint(CQORConstraint& source)
    : CQORConstraint(source.m_Type, source.m_csValue, source.m_bStatus) {
    m_Parameters = clonesOf(source.m_Parameters);
}

CQORConstraint::~CQORConstraint() {
    for (const CQorParamStorage* const storage : m_Parameters)
        delete storage;
}

CQORConstraint& CQORConstraint::operator=(const CQORConstraint& source) {
    if (this == &source) return *this;
    const Storages clones = clonesOf(source.m_Parameters);
    for (const CQorParamStorage* const storage : m_Parameters)
        delete storage;
    m_Parameters = clones;
    m_Type = source.m_Type;
    m_csValue = source.m_csValue;
    m_bStatus = source.m_bStatus;
    return *this;
}

CQorParamStorage* CQORConstraint::FindParameterInArray(QorLong id) {
    return rules::findStorage(m_Parameters, id);
}

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
    auto element = corvane::xml::ElementWriter::make(*g_pXMLDoc, rules::name::kConstraint);
    corvane::xml::ElementWriter constraint(*element);
    constraint.attribute(kType, m_Type == QORConstraint_Material ? kMaterial : u"");
    constraint.attribute(kValue, m_csValue);
    constraint.attribute(kStatus, m_bStatus ? rules::name::kTrue : rules::name::kFalse);
    rules::writeParameters(*element, m_Parameters, Type_CustomRuleData,
                           rules::reportIllegalParameter);
    return element.release();
}
