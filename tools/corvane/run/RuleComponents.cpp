#include "run/RuleComponents.h"

#include <algorithm>

#include <corvane/app/StringResources.h>
#include <corvane/config/ModuleConfiguration.h>
#include <corvane/platform/ComError.h>
#include <corvane/rules/CQorDataTypeConverter.h>
#include <corvane/scriptrules/ScriptFolderScope.h>

#include "Text.h"
#include "files/RuleModules.h"
#include "files/ScriptRule.h"
#include "run/Plan.h"

namespace {

namespace fs = std::filesystem;
using namespace corvane::resource;

fs::path pathOf(const CStringW& text) {
    return shownPath(text).Std();
}

/// The module that the loader would take for a name: that stem with either system's ending, case
/// ignored, in the first folder that has one.
fs::path moduleFile(const std::vector<CStringW>& folders, const CStringW& file) {
    const CStringW stem = fs::path(std::u16string(lastName(file))).stem().u16string();
    for (const CStringW& folder : folders) {
        std::vector<fs::path> found;
        std::error_code status;
        for (const auto& entry : fs::directory_iterator(pathOf(folder), status)) {
            const CStringW name = entry.path().filename().u16string();
            if (RuleModules::isModuleName(name) &&
                CStringW(entry.path().stem().u16string()).CompareNoCase(stem) == 0)
                found.push_back(entry.path());
        }
        if (!found.empty()) return *std::ranges::min_element(found);
    }
    return {};
}

}  // namespace

RuleComponents::RuleComponents(const std::vector<CStringW>& moduleFolders)
    : moduleFolders_(RuleModules(moduleFolders).folders()),
      scriptFolder_(corvane::GetModuleConfiguration().scriptFolder) {}

void RuleComponents::describe(const RuleFile& file, PlannedRule& rule) {
    QorXMLNode& element = file.element(rule.element);
    rule.blank.line = file.line(rule.element);
    rule.blank.name = attributeText(element, kRuleNameAttr).ToUtf8();
    QorLong severity = -1;
    CQorDataTypeConverter().TextToValue(attributeText(element, kRuleSeverityAttr), severity);
    rule.blank.severity.number = severity;
    rule.identity = element.GetXML().ToUtf8();
    if (RuleModules::isModuleName(attributeText(element, kRuleFileAttr)))
        describeModuleRule(element, rule);
    else
        describeScriptRule(element, file.scriptFolder(rule.element), rule);
    if (const std::string& source = file.changedSource(rule.element).text; !source.empty())
        rule.blank.source = source;
    for (const CStringW& included : file.included())
        addFile(rule, pathOf(included));
    for (const results::Component& component : rule.blank.components)
        rule.identity += "\n" + component.name + " " + component.sha256;
}

void RuleComponents::describeModuleRule(const QorXMLNode& element, PlannedRule& rule) {
    CStringW category = attributeText(element, kRuleCategoryAttr);
    if (category.IsEmpty()) category = attributeText(element, kRuleCategoryTextAttr);
    rule.blank.category = category.ToUtf8();
    rule.blank.description = attributeText(element, kRuleDescriptionAttr).ToUtf8();
    rule.blank.source = attributeText(element, kRuleSourceAttr).ToUtf8();
    const fs::path module = moduleFile(moduleFolders_, attributeText(element, kRuleFileAttr));
    if (!module.empty()) addFile(rule, module);
}

void RuleComponents::describeScriptRule(QorXMLNode& element, const CStringW& ownFolder,
                                        PlannedRule& rule) {
    const corvane::ScriptFolderScope scripts(ownFolder);
    const std::optional<CStringW> folder = ownFolder.IsEmpty() ? scriptFolder_ : ownFolder;
    try {
        ScriptRule script;
        // One entry of the index counts, but which one the whole of it decides.
        if (script.PopulateScriptRule(&element))
            rule.identity += "\nindex " + hashes_.of(pathOf(*folder) / "UserDefinedFile.xml");
        if (!script.hasDefinition()) script.PopulateParametersFromXML(&element);
        rule.blank.name = script.m_csRuleName.ToUtf8();
        rule.blank.category = script.m_csRuleCategory.ToUtf8();
        rule.blank.description = script.m_csRuleDescription.ToUtf8();
        rule.blank.source = script.m_csRuleSource.ToUtf8();
        for (const CStringW& category : script.m_lstCategories)
            rule.categories.push_back(category);
        const CStringW& name = script.m_csRuleFileName;
        if (folder && !name.IsEmpty() && !leavesScriptFolder(name))
            addFile(rule, pathOf(*folder + u"/" + name));
        const CStringW& page = script.m_csRuleModuleName;
        if (folder && page.Right(3) == u".md" && !leavesScriptFolder(page)) {
            const HelpPage& help = pages_.of(pathOf(*folder), pathOf(page));
            rule.blank.why = help.why;
            rule.blank.how = help.how;
        }
        for (const CStringW& engine : script.m_lstEngines)
            addFilesOfStem(rule, pathOf(engine));
    } catch (const _com_error&) {
        // The worker that reads the rule tells what is wrong with it.
    }
}

void RuleComponents::addFile(PlannedRule& rule, const fs::path& path) {
    rule.blank.components.push_back({path.filename().string(), hashes_.of(path)});
}

void RuleComponents::addFilesOfStem(PlannedRule& rule, const fs::path& typeLibrary) {
    addFile(rule, typeLibrary);
    for (const char* ending : {".lua", ".so", ".dll"}) {
        const fs::path file = fs::path(typeLibrary).replace_extension(ending);
        std::error_code status;
        if (fs::is_regular_file(file, status)) addFile(rule, file);
    }
}
