#include <corvane/app/StringResources.h>
#include <corvane/rules/CQORFrameWrkUtils.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/IllegalParameter.h"
#include "rules/RequiredElement.h"
#include "rules/RuleElement.h"

namespace resource = corvane::resource;
namespace rules = corvane::rules;

void CQorRule::PopulateParametersFromXML(QorXMLNode* node) {
    if (!node) return;
    const auto element = rules::requiredElement(*node);
    rules::readRuleTexts(element, *this);
    m_lRuleSeverity = rules::readNumber(element, resource::kRuleSeverityAttr);
    m_csRuleCategory = rules::readTextOrEmpty(element, resource::kRuleCategoryAttr);
    if (!rules::readParameters(element, m_Parameters, Type_CustomRuleData))
        return rules::reportIllegalParameter();
    m_bPopulated = true;
}

QorXMLNode* CQorRule::GetXML() {
    if (!g_pXMLDoc) return nullptr;
    auto element = rules::makeRuleElement(*this, resource::kRuleCategoryAttr);
    rules::writeParameters(*element, m_Parameters, Type_CustomRuleData,
                           rules::reportIllegalParameter);
    return element.release();
}

QorXMLNode* CQorRule::CreateRuleNode(QorXMLDocument* document, QorXMLNode* parent) const {
    if (!document || !parent) return nullptr;
    return parent->AppendNode(CQORFrameWrkUtils::GetStringWithoutSpaces(m_csRuleName), document);
}
