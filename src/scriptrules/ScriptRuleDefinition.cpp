#include <memory>
#include <optional>

#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/xml/QorXMLNode.h>

#include "rules/RequiredElement.h"
#include "rules/RuleElement.h"
#include "scriptrules/RuleIndex.h"
#include "xml/ElementAccess.h"

namespace resource = corvane::resource;
namespace rules = corvane::rules;

bool ConcreteQORRule::PopulateScriptRule(QorXMLNode* ruleNode) {
    if (!ruleNode) return false;
    const std::optional<CStringW> folder = corvane::scriptrules::scriptFolder();
    if (!folder) return false;
    const corvane::xml::ElementView element = rules::requiredElement(*ruleNode);
    const CStringW name = rules::readTextOrEmpty(element, resource::kRuleNameAttr);
    const std::unique_ptr<QorXMLNode> entry = corvane::scriptrules::findIndexEntry(*folder, name);
    PopulateParametersFromXML(entry ? entry.get() : ruleNode);
    m_lRuleSeverity = rules::readNumber(element, resource::kRuleSeverityAttr);
    return entry != nullptr;
}
