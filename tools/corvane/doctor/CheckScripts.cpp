#include <map>
#include <memory>

#include <corvane/app/StringResources.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"
#include "doctor/Checks.h"
#include "doctor/Places.h"
#include "files/RuleFile.h"
#include "files/ScriptRule.h"

namespace {

/// Looks at the rules that the index defines, each with its script and its engines.
class IndexCheck {
public:
    IndexCheck(Diagnosis& diagnosis, CStringW folder)
        : diagnosis_(diagnosis), folder_(std::move(folder)) {}

    void checkRules(const QorXMLNodeList& rules) {
        for (QorLong i = 0; i < rules.GetSize(); ++i)
            if (QorXMLNode* node = rules[i]) checkRule(*node);
    }

private:
    void checkRule(QorXMLNode& node) {
        const CStringW line = tr("line {0} of the index", corvane::XMLLine(node));
        const CStringW name = attributeText(node, corvane::resource::kRuleNameAttr);
        const CStringW subject = name.IsEmpty() ? line : name;
        if (name.IsEmpty())
            diagnosis_.wrong(subject, tr("the rule has no name and cannot be found"),
                             tr("give it a name, or delete it"));
        // Names are compared without regard to case, and the first one counts.
        const auto [first, isNew] = names_.try_emplace(CStringW(name).MakeLower(), line);
        if (!isNew && !name.IsEmpty())
            diagnosis_.wrong(
                subject, tr("{0} is never used: the name is in {1} already", line, first->second),
                tr("give each rule a name of its own"));
        ScriptRule rule;
        rule.PopulateParametersFromXML(&node);
        checkScript(subject, rule.m_csRuleFileName);
        for (const results::Remark& missing : rule.missingEngines())
            diagnosis_.wrong(subject, CStringW::FromUtf8(missing.shown),
                             tr("register the engine's type library for 64-bit use"));
    }

    void checkScript(const CStringW& subject, const CStringW& script) {
        if (script.IsEmpty()) {
            diagnosis_.wrong(subject, tr("the rule names no script file"),
                             tr("add the attribute that names it, or delete the rule"));
            return;
        }
        const CStringW path = shownPath(folder_ + u"\\" + script);
        const Presence presence = presenceOfFile(path);
        if (presence == Presence::Readable)
            diagnosis_.good(subject, script);
        else if (presence == Presence::Missing)
            diagnosis_.wrong(subject, tr("there is no script {0}", path),
                             tr("put the script there, or correct its name in the index"));
        else
            diagnosis_.wrong(subject, tr("the script {0} cannot be read", path),
                             tr("put a file there that the user can read"));
    }

    Diagnosis& diagnosis_;
    CStringW folder_;
    std::map<CStringW, CStringW> names_;
};

void checkIndex(Diagnosis& diagnosis, const CStringW& folder) {
    const CStringW subject = tr("index");
    const CStringW path = shownPath(folder + u"\\UserDefinedFile.xml");
    const Presence presence = presenceOfFile(path);
    if (presence == Presence::Missing) {
        diagnosis.note(subject,
                       tr("{0} is not there: each rule file has to define its script rules", path));
        return;
    }
    if (presence == Presence::Unreadable) {
        diagnosis.wrong(subject, tr("{0} cannot be read", path),
                        tr("put a file there that the user can read"));
        return;
    }
    QorXMLDocument document;
    const QorXMLNode* root = document.LoadFromFile(path);
    if (!root) {
        diagnosis.wrong(subject, faultText(path, corvane::LastXMLFault(document)),
                        tr("correct the file; until then none of its rules is found"));
        return;
    }
    const CStringW ruleName = corvane::ResourceText(corvane::resource::kRuleNode);
    if (ruleName.IsEmpty()) {
        diagnosis.note(subject, tr("without language module its rules cannot be read"));
        return;
    }
    const std::unique_ptr<QorXMLNodeList> rules(root->GetNodeList(ruleName));
    if (rules->GetSize() == 0)
        diagnosis.wrong(subject,
                        tr("{0}: <{1}> has no child <{2}>", path, root->GetNodeName(), ruleName),
                        tr("define the rules there, or delete the file"));
    else
        diagnosis.good(subject,
                       trCount({"{1}, {0} rule", "{1}, {0} rules"}, rules->GetSize(), path));
    IndexCheck(diagnosis, folder).checkRules(*rules);
}

}  // namespace

void checkScripts(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration) {
    diagnosis.section(tr("Script rules"));
    const CStringW subject = tr("script folder");
    if (!configuration.scriptFolder) {
        diagnosis.note(subject, tr("none is configured: no script rule is defined or run"));
        return;
    }
    const CStringW& folder = *configuration.scriptFolder;
    diagnosis.noteRelative(subject, folder);
    if (presenceOfFolder(shownPath(folder)) != Presence::Readable) {
        diagnosis.wrong(subject, tr("\"{0}\" is no folder that can be read", folder),
                        tr("correct \"directory=FOLDER\" in {0}, or let the user read the folder",
                           shownPath(configuration.file)));
        return;
    }
    diagnosis.good(subject, shownPath(folder));
    checkIndex(diagnosis, folder);
}
