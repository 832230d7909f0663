#include <memory>
#include <optional>
#include <utility>

#include <corvane/app/BatchMode.h>
#include <corvane/app/StringResources.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLNode.h>

#include "app/CCorvaneFrameworkApp.h"
#include "emulation/Components.h"
#include "emulation/UserInterface.h"
#include "rules/RuleElement.h"
#include "scriptrules/RuleIndex.h"
#include "scriptrules/ScriptSession.h"
#include "scriptrules/ScriptText.h"
#include "system/Files.h"
#include "system/Paths.h"
#include "xml/ElementAccess.h"

using corvane::ResourceText;
using corvane::ScriptRun;
using corvane::ScriptRunStatus;
using corvane::xml::ElementView;
namespace resource = corvane::resource;
namespace rules = corvane::rules;

namespace {

constexpr QorLong kNewRuleSeverity = 3;
constexpr const char16_t* kNewRuleSource = u"*****";
constexpr const char16_t* kNewRuleModule = u"Interactive User Defined Rule";

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

constexpr QorLong kPassed = 0;
constexpr QorLong kScriptRuleFailed = -6;

void showError(const CStringW& text) {
    corvane::emulation::messageBox(
        text, ResourceText(resource::kScriptCaption),
        corvane::emulation::kMessageIconError | corvane::emulation::kMessageTaskModal);
}

// Notes the path of the rule's script in the run; when there is none, why.
bool findScript(ScriptRun& run) {
    const CStringW& file = run.rule->m_csRuleFileName;
    const std::optional<CStringW> folder = corvane::scriptrules::scriptFolder();
    if (!folder) {
        run.status = ScriptRunStatus::NotConfigured;
        return false;
    }
    run.scriptFolder = *folder;
    if (file.IsEmpty()) {
        run.status = ScriptRunStatus::NoScriptName;
        return false;
    }
    run.scriptPath = corvane::system::join(run.scriptFolder, file);
    return true;
}

void reportMissingScript(ScriptRun& run) {
    run.status = ScriptRunStatus::ScriptMissing;
    CStringW message;
    message.Format(ResourceText(resource::kScriptMissing), run.rule->m_csRuleName,
                   run.rule->m_csRuleName);
    showError(message);
}

// Notes why a script that could not be read is not to be run. One that is there all the same, and
// not too large, runs as an empty one.
bool mayRunUnread(ScriptRun& run) {
    if (!corvane::system::pathExists(run.scriptPath)) {
        reportMissingScript(run);
        return false;
    }
    run.scriptUnreadable = true;
    if (!corvane::scriptrules::isTooLarge(run.scriptPath)) return true;
    run.status = ScriptRunStatus::ScriptTooLarge;
    return false;
}

}  // namespace

ConcreteQORRule::ConcreteQORRule() {
    using namespace corvane;
    m_csRuleName = ResourceText(resource::kNewRuleName);
    m_csRuleDisplayName = m_csRuleName;
    m_csRuleDescription = ResourceText(resource::kNewRuleDescription);
    m_csRuleSource = kNewRuleSource;
    m_lRuleSeverity = kNewRuleSeverity;
    m_csRuleModuleName = kNewRuleModule;
    SetRuleCategory(QORRuleCategory_1);
    ConcreteQORRule::InitializeParamStorage();
}

ConcreteQORRule::~ConcreteQORRule() = default;

void ConcreteQORRule::InitializeParamStorage() {}

void ConcreteQORRule::RunRule() {}

void ConcreteQORRule::UpdateRule(const RuleUnitSystemStructure* /*first*/,
                                 const RuleUnitSystemStructure* /*second*/) {}

bool ConcreteQORRule::UpdateRule(CQorRule* /*target*/) {
    return true;
}

void ConcreteQORRule::EditRule() {}

CQorRule& ConcreteQORRule::operator=(CQorRule* source) {
    return CQorRule::operator=(source);
}

void ConcreteQORRule::UpdateRule(QorLong /*first*/, QorLong /*second*/) {}

void ConcreteQORRule::setValue(QorLong /*first*/, QorLong /*second*/, QorLong /*third*/) {}

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

QorLong ConcreteQORRule::Execute(QORICadSys* /*cadSystem*/, const CQorData*& /*data*/,
                                 QORResultSet*& /*results*/) const {
    return ExecuteScriptRule();
}

QorLong ConcreteQORRule::ExecuteScriptRule() const {
    ScriptRun run;
    run.rule = this;
    {
        const corvane::emulation::ComponentRuntime runtime;
        corvane::scriptrules::ScriptSession session(run);
        if (session.createHost() && session.addEngines(m_lstEngines) && findScript(run)) {
            CStringW script;
            const bool isRead = ReadFromFile(run.scriptPath, script);
            if ((isRead || mayRunUnread(run)) && !session.runScript(std::move(script)) &&
                run.status == ScriptRunStatus::ScriptFailed) {
                QorLong line = run.line;
                QorLong column = run.column;
                CStringW report = session.report();
                CheckForScriptError(line, column, report);
            }
        }
    }
    corvane::scriptrules::notice(run);
    const bool passed =
        run.status == ScriptRunStatus::Succeeded || run.status == ScriptRunStatus::NotConfigured;
    return passed ? kPassed : kScriptRuleFailed;
}

void ConcreteQORRule::CheckForScriptError(QorLong& lineNumber, QorLong& charNumber,
                                          CStringW& message) const {
    lineNumber = -1;
    charNumber = -1;
    CStringW text;
    text.Format(ResourceText(resource::kScriptFailed), m_csRuleName);
    text += u"\n" + message;
    bool batch = false;
    GetBatchModeStatus(&batch);
    if (!batch) showError(text);
}

bool ConcreteQORRule::ReadFromFile(CStringW path, CStringW& text) const {
    std::optional<CStringW> script = corvane::scriptrules::readScript(path);
    if (!script) return false;
    if (text.IsEmpty())
        text = std::move(*script);
    else
        text += *script;
    return true;
}

QorLong ConcreteQORRule::ExecuteVSTARule(const CQorData*& /*data*/,
                                         QORResultSet*& /*results*/) const {
    return kPassed;
}
