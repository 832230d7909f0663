#include <utility>

#include <corvane/app/StringResources.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/ParameterVisit.h"
#include "rules/RuleElement.h"
#include "system/Paths.h"
#include "xml/ElementWriter.h"

namespace corvane::rules {
namespace {

bool isWritten(QorOperator_e op) {
    return op != QorOperator_NotSaved && op != QorOperator_Hidden;
}

}  // namespace

void writeText(QorXMLNode& element, std::uint32_t resource, CStringW text) {
    element.AddAttribute(ResourceText(resource), std::move(text));
}

std::unique_ptr<QorXMLNode> makeRuleElement(const CQorRule& rule, std::uint32_t categoryResource) {
    auto element = xml::ElementWriter::make(*g_pXMLDoc, ResourceText(resource::kRuleNode));
    const auto add = [&element](std::uint32_t resource, CStringW text) {
        writeText(*element, resource, std::move(text));
    };
    const CQorDataTypeConverter converter;
    add(resource::kRuleNameAttr, rule.m_csRuleName);
    add(resource::kRuleStatusAttr, converter.ValueToText(rule.m_lRuleStatus));
    add(resource::kRuleLifeStatusAttr, converter.ValueToText(rule.m_lRuleLifeStatus));
    add(resource::kRuleDescriptionAttr, rule.m_csRuleDescription);
    add(resource::kRuleSourceAttr, rule.m_csRuleSource);
    add(resource::kRuleModuleAttr, rule.m_csRuleModuleName);
    add(resource::kRuleFileAttr, system::fileName(rule.m_csRuleFileName));
    add(resource::kRuleSeverityAttr, converter.ValueToText(rule.m_lRuleSeverity));
    add(categoryResource, rule.m_csRuleCategory);
    return element;
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

}  // namespace corvane::rules
