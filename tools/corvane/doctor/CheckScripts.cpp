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
        CStringW line;
        line.Format(u"line %d of the index", corvane::XMLLine(node));
        const CStringW name = attributeText(node, corvane::resource::kRuleNameAttr);
        const CStringW subject = name.IsEmpty() ? line : name;
        if (name.IsEmpty())
            diagnosis_.wrong(subject, u"the rule has no name and cannot be found",
                             u"give it a name, or delete it");
        // Names are compared without regard to case, and the first one counts.
        const auto [first, isNew] = names_.try_emplace(CStringW(name).MakeLower(), line);
        if (!isNew && !name.IsEmpty())
            diagnosis_.wrong(subject, line + u" is never used: the name stands in " + first->second,
                             u"give each rule a name of its own");
        ScriptRule rule;
        rule.PopulateParametersFromXML(&node);
        checkScript(subject, rule.m_csRuleFileName);
        for (const CStringW& missing : rule.missingEngines())
            diagnosis_.wrong(subject, missing,
                             u"register the engine's type library for 64-bit use");
    }

    void checkScript(const CStringW& subject, const CStringW& script) {
        if (script.IsEmpty()) {
            diagnosis_.wrong(subject, u"the rule names no script file",
                             u"add the attribute that names it, or delete the rule");
            return;
        }
        const CStringW path = shownPath(folder_ + u"\\" + script);
        const Presence presence = presenceOfFile(path);
        if (presence == Presence::Readable)
            diagnosis_.good(subject, script);
        else if (presence == Presence::Missing)
            diagnosis_.wrong(subject, u"there is no script " + path,
                             u"put the script there, or correct its name in the index");
        else
            diagnosis_.wrong(subject, u"the script " + path + u" cannot be read",
                             u"put a file there that the user can read");
    }

    Diagnosis& diagnosis_;
    CStringW folder_;
    std::map<CStringW, CStringW> names_;
};

void checkIndex(Diagnosis& diagnosis, const CStringW& folder) {
    constexpr const char16_t* kSubject = u"index";
    const CStringW path = shownPath(folder + u"\\UserDefinedFile.xml");
    const Presence presence = presenceOfFile(path);
    if (presence == Presence::Missing) {
        diagnosis.note(kSubject,
                       path + u" is not there: each rule file has to define its script rules");
        return;
    }
    if (presence == Presence::Unreadable) {
        diagnosis.wrong(kSubject, path + u" cannot be read",
                        u"put a file there that the user can read");
        return;
    }
    QorXMLDocument document;
    const QorXMLNode* root = document.LoadFromFile(path);
    if (!root) {
        diagnosis.wrong(kSubject, faultText(path, corvane::LastXMLFault(document)),
                        u"correct the file; until then none of its rules is found");
        return;
    }
    const CStringW ruleName = corvane::ResourceText(corvane::resource::kRuleNode);
    if (ruleName.IsEmpty()) {
        diagnosis.note(kSubject, u"without language module its rules cannot be read");
        return;
    }
    const std::unique_ptr<QorXMLNodeList> rules(root->GetNodeList(ruleName));
    CStringW text;
    text.Format(u"%s, %d %s", path, rules->GetSize(), rules->GetSize() == 1 ? u"rule" : u"rules");
    if (rules->GetSize() == 0)
        diagnosis.wrong(kSubject,
                        path + u": <" + root->GetNodeName() + u"> has no child <" + ruleName + u">",
                        u"define the rules there, or delete the file");
    else
        diagnosis.good(kSubject, text);
    IndexCheck(diagnosis, folder).checkRules(*rules);
}

}  // namespace

void checkScripts(Diagnosis& diagnosis, const corvane::ModuleConfiguration& configuration) {
    diagnosis.section(u"Script rules");
    if (!configuration.scriptFolder) {
        diagnosis.note(u"script folder", u"none is configured: no script rule is defined or run");
        return;
    }
    const CStringW& folder = *configuration.scriptFolder;
    diagnosis.noteRelative(u"script folder", folder);
    if (presenceOfFolder(shownPath(folder)) != Presence::Readable) {
        diagnosis.wrong(u"script folder", u"\"" + folder + u"\" is no folder that can be read",
                        u"correct \"directory=FOLDER\" in " + shownPath(configuration.file) +
                            u", or let the user read the folder");
        return;
    }
    diagnosis.good(u"script folder", shownPath(folder));
    checkIndex(diagnosis, folder);
}
