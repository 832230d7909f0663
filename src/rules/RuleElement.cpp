#include "rules/RuleElement.h"

#include <utility>

#include <corvane/app/StringResources.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/ParameterElement.h"
#include "rules/Storages.h"
#include "system/Paths.h"
#include "text/Numbers.h"
#include "xml/ElementWriter.h"

namespace corvane::rules {
namespace {

bool isWritten(QorOperator_e op) {
    return op != QorOperator_NotSaved && op != QorOperator_Hidden;
}

}  // namespace

bool readText(xml::ElementView element, std::uint32_t resource, CStringW& field) {
    const auto text = element.attribute(ResourceText(resource));
    if (text) field = *text;
    return text.has_value();
}

CStringW readTextOrEmpty(xml::ElementView element, std::uint32_t resource) {
    return element.attribute(ResourceText(resource)).value_or(std::u16string_view());
}

QorLong readNumber(xml::ElementView element, std::uint32_t resource) {
    std::int32_t number = -1;
    if (const auto text = element.attribute(ResourceText(resource))) text::scanInt32(*text, number);
    return number;
}

void readRuleTexts(xml::ElementView element, CQorRule& rule) {
    readText(element, resource::kRuleNameAttr, rule.m_csRuleName);
    readText(element, resource::kRuleDescriptionAttr, rule.m_csRuleDescription);
    readText(element, resource::kRuleSourceAttr, rule.m_csRuleSource);
    readText(element, resource::kRuleModuleAttr, rule.m_csRuleModuleName);
    readText(element, resource::kRuleFileAttr, rule.m_csRuleFileName);
}

bool readParameters(xml::ElementView parent, const CQorArray<CQorParamStorage*>& parameters,
                    Type_e lastKind) {
    if (parameters.GetSize() == 0) return true;
    const ParameterIndex index(parent);
    for (const CQorParamStorage* const storage : parameters) {
        if (storage && storage->m_Type > lastKind) return false;
        const bool legal = visitParameter(storage, [&index](auto& parameter) {
            if (const xml::ElementView element = index.find(parameter.m_lType)) {
                ParameterReader reader(element.element());
                parameter.PopulateFromXML(reader);
            }
        });
        if (!legal) return false;
    }
    return true;
}

void writeText(QorXMLNode& element, std::uint32_t resource, CStringW text) {
    element.AddAttribute(ResourceText(resource), std::move(text));
}

std::unique_ptr<QorXMLNode> makeRuleElement(const CQorRule& rule, std::uint32_t categoryResource) {
    constexpr std::size_t kAttributes = 9;
    auto node =
        xml::ElementWriter::make(*g_pXMLDoc, ResourceText(resource::kRuleNode), kAttributes);
    xml::ElementWriter element(*node);
    const auto add = [&element](std::uint32_t resource, std::u16string_view text) {
        element.attribute(ResourceText(resource), text);
    };
    add(resource::kRuleNameAttr, rule.m_csRuleName);
    add(resource::kRuleStatusAttr, text::printInt32(rule.m_lRuleStatus));
    add(resource::kRuleLifeStatusAttr, text::printInt32(rule.m_lRuleLifeStatus));
    add(resource::kRuleDescriptionAttr, rule.m_csRuleDescription);
    add(resource::kRuleSourceAttr, rule.m_csRuleSource);
    add(resource::kRuleModuleAttr, rule.m_csRuleModuleName);
    add(resource::kRuleFileAttr, system::fileName(rule.m_csRuleFileName));
    add(resource::kRuleSeverityAttr, text::printInt32(rule.m_lRuleSeverity));
    add(categoryResource, rule.m_csRuleCategory);
    return node;
}

void writeParameters(const QorXMLNode& parent, const CQorArray<CQorParamStorage*>& parameters,
                     Type_e lastKind, void (*illegal)()) {
    for (const CQorParamStorage* const storage : parameters) {
        const bool legal = visitParameter(storage, [&](auto& parameter) {
            if (!isWritten(parameter.m_Operator)) return;
            if (storage->m_Type > lastKind) return illegal();
            parameter.AppendXMLNode(parent);
        });
        if (!legal) illegal();
    }
}

void writeConstraints(QorXMLNode& parent, const CQorArray<CQORConstraint*>& constraints) {
    for (CQORConstraint* const constraint : constraints) {
        if (!constraint) continue;
        const std::unique_ptr<QorXMLNode> element(constraint->GetXMLNode());
        parent.AppendNode(element.get());
    }
}

}  // namespace corvane::rules
