#include <memory>
#include <utility>

#include <corvane/app/StringResources.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "app/CCorvaneFrameworkApp.h"
#include "emulation/Components.h"
#include "rules/RequiredElement.h"
#include "rules/RuleElement.h"
#include "system/Paths.h"
#include "xml/ElementAccess.h"

using corvane::ResourceText;
using corvane::xml::ElementView;
namespace resource = corvane::resource;
namespace rules = corvane::rules;

namespace {

// Records have no place in this form.
constexpr Type_e kLastKind = Type_ColorRef;

using Node = std::unique_ptr<QorXMLNode>;

// The walks below pass over comments and text, which a person may have put among the elements.

void readCategories(ElementView rule, CStringList& categories) {
    const ElementView list = rule.child(ResourceText(resource::kCategoriesNode));
    if (!list) return;
    for (ElementView entry = list.child(); entry; entry = entry.sibling())
        categories.AddTail(rules::readTextOrEmpty(entry, resource::kCategoryNode));
}

void readEngines(ElementView rule, CStringList& engines) {
    const ElementView list = rule.child(ResourceText(resource::kEnginesNode));
    if (!list) return;
    // What an engine does not say is as the engine before it says.
    CStringW guid;
    CStringW major;
    CStringW minor;
    CStringW locale;
    for (ElementView engine = list.child(); engine; engine = engine.sibling()) {
        rules::readText(engine, resource::kGuidAttr, guid);
        rules::readText(engine, resource::kMajorAttr, major);
        rules::readText(engine, resource::kMinorAttr, minor);
        rules::readText(engine, resource::kLcidAttr, locale);
        TypeLibDetails library{CStringW()};
        CStringW path;
        if (library.FindTypeLibFile(path, guid, major, minor, locale))
            engines.AddTail(std::move(path));
    }
}

void writeHexadecimal(QorXMLNode& element, std::uint32_t number, std::uint32_t value) {
    CStringW text;
    text.Format(u"%x", value);
    rules::writeText(element, number, std::move(text));
}

void writeCategories(QorXMLNode& rule, const CStringList& categories) {
    const Node list(rule.AppendNode(ResourceText(resource::kCategoriesNode)));
    for (const CStringW& category : categories) {
        const Node entry(list->AppendNode(ResourceText(resource::kCategoryNode)));
        rules::writeText(*entry, resource::kCategoryNode, category);
    }
}

void writeEngines(QorXMLNode& rule, const CStringList& engines) {
    const Node list(rule.AppendNode(ResourceText(resource::kEnginesNode)));
    for (const CStringW& path : engines) {
        const Node engine(list->AppendNode(ResourceText(resource::kEngineAttr)));
        TypeLibDetails library(path);
        if (!library.ReadTypeLibAttributes()) continue;
        rules::writeText(*engine, resource::kEngineAttr, corvane::system::fileName(path));
        rules::writeText(*engine, resource::kGuidAttr, corvane::emulation::guidText(library.guid));
        writeHexadecimal(*engine, resource::kMajorAttr, library.majorVersion);
        writeHexadecimal(*engine, resource::kMinorAttr, library.minorVersion);
        writeHexadecimal(*engine, resource::kLcidAttr, library.lcid);
    }
}

void reportIllegalParameter() {
    AfxMessageBox(u"Illegal Param DataType Defined");
}

}  // namespace

void ConcreteQORRule::PopulateParametersFromXML(QorXMLNode* node) {
    if (!node) return;
    const ElementView element = rules::requiredElement(*node);
    rules::readRuleTexts(element, *this);
    rules::readText(element, resource::kRuleNameAttr, m_csRuleDisplayName);
    rules::readText(element, resource::kRuleDescriptionAttr, m_csRuleBaseDescription);
    m_lRuleStatus = rules::readNumber(element, resource::kRuleStatusAttr);
    m_lRuleLifeStatus = rules::readNumber(element, resource::kRuleLifeStatusAttr);
    m_lRuleSeverity = rules::readNumber(element, resource::kRuleSeverityAttr);
    m_csRuleCategory = rules::readTextOrEmpty(element, resource::kRuleCategoryTextAttr);
    readCategories(element, m_lstCategories);
    readEngines(element, m_lstEngines);
    rules::readText(element, resource::kModuleFileAttr, m_csModuleFileName);
    if (rules::readParameters(element, m_Parameters, kLastKind)) m_bPopulated = true;
}

QorXMLNode* ConcreteQORRule::GetXML() {
    // Without the application object there are no names to write with.
    if (!g_pXMLDoc || !corvane::app::frameworkApp()) return nullptr;
    Node element = rules::makeRuleElement(*this, resource::kRuleCategoryTextAttr);
    rules::writeText(*element, resource::kModuleFileAttr, m_csModuleFileName);
    writeCategories(*element, m_lstCategories);
    writeEngines(*element, m_lstEngines);
    rules::writeParameters(*element, m_Parameters, kLastKind, reportIllegalParameter);
    return element.release();
}
