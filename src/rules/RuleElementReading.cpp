#include <corvane/app/StringResources.h>
#include <corvane/rules/CQorRule.h>

#include "rules/ParameterIndex.h"
#include "rules/ParameterVisit.h"
#include "rules/RuleElement.h"
#include "text/Scan.h"

namespace corvane::rules {

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

}  // namespace corvane::rules
