#include <optional>

#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "config/ScriptFolder.h"
#include "platform/Paths.h"
#include "platform/Unicode.h"
#include "rules/RequiredElement.h"
#include "rules/RuleElement.h"
#include "xml/ElementAccess.h"

namespace platform = corvane::platform;
namespace resource = corvane::resource;
namespace rules = corvane::rules;
using corvane::xml::ElementView;

namespace {

constexpr std::u16string_view kIndexFile = u"UserDefinedFile.xml";

// The first entry of that name in an index; empty when there is none. A missing name is an empty
// one.
ElementView findEntry(const QorXMLNode& index, const CStringW& name) {
    const auto entryName = corvane::ResourceText(resource::kRuleNode);
    const auto nameAttribute = corvane::ResourceText(resource::kRuleNameAttr);
    for (const ElementView entry : corvane::xml::ChildrenNamed(ElementView(index), entryName)) {
        const auto text = entry.attribute(nameAttribute);
        if (platform::compareNoCase(text.value_or(u""), name) == 0) return entry;
    }
    return {};
}

}  // namespace

bool ConcreteQORRule::PopulateScriptRule(QorXMLNode* ruleNode) {
    if (!ruleNode) return false;
    const std::optional<CStringW> folder = corvane::config::scriptFolder();
    if (!folder) return false;
    const ElementView element = rules::requiredElement(*ruleNode);
    const CStringW name = rules::readTextOrEmpty(element, resource::kRuleNameAttr);
    QorXMLDocument index;
    const QorXMLNode* const root = index.LoadFromFile(platform::join(*folder, kIndexFile));
    const ElementView entry = root ? findEntry(*root, name) : ElementView();
    if (entry) {
        QorXMLNode entryNode = entry.node();
        PopulateParametersFromXML(&entryNode);
    } else {
        PopulateParametersFromXML(ruleNode);
    }
    m_lRuleSeverity = rules::readNumber(element, resource::kRuleSeverityAttr);
    return static_cast<bool>(entry);
}
