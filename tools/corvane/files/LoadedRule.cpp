#include "files/LoadedRule.h"

#include <exception>
#include <filesystem>
#include <fstream>

#include <corvane/app/StringResources.h>
#include <corvane/config/DataFolders.h>
#include <corvane/config/ModuleConfiguration.h>
#include <corvane/platform/ComError.h>
#include <corvane/rules/CConcreteFailedRule.h>
#include <corvane/rules/CQorDataTypeConverter.h>
#include <corvane/scriptrules/ScriptFolderScope.h>

#include "Text.h"
#include "files/ScriptRule.h"
#include "language/Messages.h"

namespace {

using namespace corvane::resource;

CStringW settingsFolder() {
    std::u16string folder(static_cast<std::size_t>(GetDataSettingsFolderPath(nullptr, nullptr)),
                          u'\0');
    // Room for the terminator, which a string has after its end.
    const auto size = static_cast<QorLong>(folder.size() + 1);
    GetDataSettingsFolderPath(folder.data(), &size);
    return folder;
}

results::Remark missingFolder() {
    const CStringW file = settingsFolder() + corvane::configuration::kFile;
    if (!std::ifstream(std::filesystem::path(file.Std())))
        return remark("no script folder: {0} cannot be read", file);
    // The blanks and the missing line end are not seen by a person who looks at the file.
    return remark(
        "no script folder: {0} has no line \"directory=FOLDER\" in section "
        "[RULE_SCRIPT_LOCATION]; the line has no blanks around \"=\" and ends in a line end",
        file);
}

void readModuleRule(LoadedRule& loaded, QorXMLNode& element, RuleModules& modules) {
    results::Remark problem("");
    loaded.rule.reset(modules.makeRule(attributeText(element, kRuleFileAttr),
                                       attributeText(element, kRuleNameAttr), problem));
    if (!loaded.rule) {
        loaded.problems.push_back(problem);
        return;
    }
    loaded.rule->PopulateParametersFromXML(&element);
    loaded.rule->PostPopulate();
    loaded.origin = RuleOrigin::Module;
}

void readScriptRule(LoadedRule& loaded, QorXMLNode& element) {
    auto script = std::make_unique<ScriptRule>();
    const bool inIndex = script->PopulateScriptRule(&element);
    if (!script->hasDefinition()) {
        loaded.problems.push_back(missingFolder());
        script->PopulateParametersFromXML(&element);
    }
    const std::vector<results::Remark>& missing = script->missingEngines();
    loaded.problems.insert(loaded.problems.end(), missing.begin(), missing.end());
    if (leavesScriptFolder(script->m_csRuleFileName)) {
        loaded.problems.push_back(
            remark("the script \"{0}\" is outside the script folder and is not run",
                   script->m_csRuleFileName));
        loaded.isRefused = true;
    }
    loaded.rule.reset(script.release());
    loaded.origin = inIndex ? RuleOrigin::Index : RuleOrigin::RuleFile;
}

void holdFailedRule(LoadedRule& loaded, const QorXMLNode& element) {
    QorLong severity = -1;
    CQorDataTypeConverter().TextToValue(attributeText(element, kRuleSeverityAttr), severity);
    CStringW category = attributeText(element, kRuleCategoryAttr);
    if (category.IsEmpty()) category = attributeText(element, kRuleCategoryTextAttr);
    loaded.rule.reset(new CConcreteFailedRule(attributeText(element, kRuleNameAttr), severity,
                                              std::move(category)));
    loaded.origin = RuleOrigin::Nowhere;
}

void readRule(LoadedRule& loaded, QorXMLNode& element, RuleModules& modules) {
    if (RuleModules::isModuleName(attributeText(element, kRuleFileAttr))) {
        readModuleRule(loaded, element, modules);
    } else {
        readScriptRule(loaded, element);
    }
}

}  // namespace

LoadedRule loadRule(const RuleFile& file, QorLong index, RuleModules& modules) {
    QorXMLNode& element = file.element(index);
    LoadedRule loaded;
    loaded.line = file.line(index);
    loaded.scriptFolder = file.scriptFolder(index);
    const corvane::ScriptFolderScope scripts(loaded.scriptFolder);
    try {
        readRule(loaded, element, modules);
    } catch (const _com_error& error) {
        loaded.problems.push_back(
            remark("reading the rule failed: {0}", statusText(error.Error())));
        loaded.rule.reset();
    } catch (const std::exception& error) {
        loaded.problems.push_back(remark("making the rule failed: {0}", error.what()));
        loaded.rule.reset();
    } catch (...) {
        loaded.problems.push_back(remark("making the rule failed with an unknown exception"));
        loaded.rule.reset();
    }
    if (!loaded.rule) holdFailedRule(loaded, element);
    if (const std::string& source = file.changedSource(index).shown; !source.empty())
        loaded.rule->m_csRuleSource = wide(source);
    return loaded;
}

std::vector<corvane::ScriptParameter> LoadedRule::scriptParameters(const CStringW& material) const {
    if (!isScript()) return {};
    return static_cast<const ScriptRule&>(*rule).GetScriptParameters(material);
}
