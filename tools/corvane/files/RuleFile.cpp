#include "files/RuleFile.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include <corvane/app/StringResources.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"
#include "files/RuleOverride.h"
#include "files/ShippedRules.h"
#include "language/Messages.h"

namespace {

namespace fs = std::filesystem;
using namespace corvane::resource;

/// Files that include each other must end.
constexpr std::size_t kDeepestInclude = 16;

CStringW placeText(const CStringW& path, QorLong line) {
    CStringW text = path;
    if (line > 0) text.AppendFormat(u":%d", line);
    return text;
}

CStringW textOf(const QorXMLNode& element, const char16_t* name) {
    CStringW text;
    element.GetAttributeValue(name, text);
    return text;
}

void takeAttribute(QorXMLNode& element, const QorXMLNode& base, std::uint32_t number) {
    const CStringW name = corvane::ResourceText(number);
    CStringW text;
    if (!element.GetAttributeValue(name, text) && base.GetAttributeValue(name, text))
        element.AddAttribute(name, text);
}

/// Adds the children of one name that `base` has and the element lacks, told apart by an attribute.
void takeChildren(QorXMLNode& element, const QorXMLNode& base, const char16_t* name,
                  const char16_t* key) {
    std::vector<CStringW> known;
    for (const QorXMLNode& child : corvane::ChildElements(element, name))
        known.push_back(textOf(child, key));
    for (const QorXMLNode& child : corvane::ChildElements(base, name)) {
        const CStringW value = textOf(child, key);
        const bool isKnown = std::ranges::any_of(
            known, [&value](const CStringW& one) { return one.CompareNoCase(value) == 0; });
        if (isKnown) continue;
        const std::unique_ptr<QorXMLNode> copy(child.CloneNode());
        element.AppendNode(copy.get());
    }
}

bool hasChild(const QorXMLNode& element, const char16_t* name) {
    return !std::ranges::empty(corvane::ChildElements(element, name));
}

/// What the element does not say, the included one says.
void inherit(QorXMLNode& element, const QorXMLNode& base) {
    for (const std::uint32_t attribute : {kRuleSeverityAttr, kRuleFileAttr})
        takeAttribute(element, base, attribute);
    takeChildren(element, base, u"Parameter", u"Type");
    takeChildren(element, base, u"Constraint", u"Value");
}

}  // namespace

/// Reads a file and those that it includes. What is wrong with one of them ends the reading.
class RuleFileReader {
public:
    CStringW problem;

    std::unique_ptr<RuleFile> read(const CStringW& path) {
        std::unique_ptr<RuleFile> file(new RuleFile);
        Places places;
        file->path_ = path;
        QorXMLDocument document;
        const QorXMLNode* root = document.LoadFromFile(path);
        if (!root) return fail(faultText(path, corvane::LastXMLFault(document)));
        file->root_ = *root;
        const CStringW ruleName = corvane::ResourceText(kRuleNode);
        if (!include(*file, places) || !exclude(*file, places)) return nullptr;
        const CStringW scripts = shipped::scriptFolderFor(fs::path(path.Std())).u16string();
        for (const QorXMLNode& element : corvane::ChildElements(file->root_, ruleName))
            if (!place(*file, places,
                       {element, attributeText(element, kRuleNameAttr), scripts,
                        corvane::XMLLine(element), false, false, CStringW()}))
                return nullptr;
        if (file->size() > 0) return file;
        return fail(tr("{0}: no rule: its document element <{1}> has no child <{2}>", path,
                       file->root_.GetNodeName(), ruleName));
    }

private:
    std::unique_ptr<RuleFile> fail(const CStringW& text) {
        problem = text;
        return nullptr;
    }

    bool failAt(const CStringW& path, const QorXMLNode& element, const CStringW& text) {
        problem = placeText(path, corvane::XMLLine(element)) + u": " + text;
        return false;
    }

    /// Where the first rule of each name is among the rules of a file.
    using Places = std::map<CStringW, std::size_t, LessNoCase>;

    bool include(RuleFile& file, Places& places) {
        for (const QorXMLNode& element : corvane::ChildElements(file.root_, u"Include")) {
            const CStringW set = textOf(element, u"Set");
            const CStringW name = textOf(element, u"File");
            if (set.IsEmpty() == name.IsEmpty())
                return failAt(file.path_, element, tr("an <Include> has a Set or a File"));
            const fs::path from = set.IsEmpty() ? fs::path(file.path_.Std()).parent_path() /
                                                      fs::path(shownPath(name).Std())
                                                : shipped::fileOf(set.ToUtf8());
            if (from.empty())
                return failAt(file.path_, element,
                              tr("the installation has no rule set \"{0}\"", set));
            if (++depth_ > kDeepestInclude)
                return failAt(file.path_, element, tr("files include each other too deeply"));
            const CStringW path(from.u16string());
            const std::unique_ptr<RuleFile> other = read(path);
            --depth_;
            if (!other) {
                problem = placeText(file.path_, corvane::XMLLine(element)) + u": " + problem;
                return false;
            }
            file.included_.push_back(path);
            std::ranges::copy(other->included_, std::back_inserter(file.included_));
            for (RuleFile::Rule& rule : other->rules_) {
                if (!places.try_emplace(rule.name, file.rules_.size()).second) continue;
                rule.line = corvane::XMLLine(element);
                rule.isIncluded = true;
                file.rules_.push_back(std::move(rule));
            }
        }
        return true;
    }

    bool exclude(RuleFile& file, Places& places) {
        std::vector<bool> isExcluded(file.rules_.size());
        for (const QorXMLNode& element : corvane::ChildElements(file.root_, u"Exclude")) {
            const CStringW name = textOf(element, u"Name");
            const auto rule = places.find(name);
            if (rule == places.end())
                return failAt(file.path_, element, tr("no included rule is called \"{0}\"", name));
            isExcluded[rule->second] = true;
            places.erase(rule);
        }
        std::vector<RuleFile::Rule> kept;
        for (std::size_t i = 0; i < file.rules_.size(); ++i) {
            if (isExcluded[i]) continue;
            places[file.rules_[i].name] = kept.size();
            kept.push_back(std::move(file.rules_[i]));
        }
        file.rules_ = std::move(kept);
        return true;
    }

    /// Whether the rule has a script or a module of its own, or an entry in the index.
    bool isDefined(const RuleFile::Rule& rule) {
        return !attributeText(rule.element, kRuleFileAttr).IsEmpty() ||
               definitions_.find(rule.scriptFolder, rule.name);
    }

    bool place(RuleFile& file, Places& places, RuleFile::Rule rule) {
        const auto [known, isNew] = places.try_emplace(rule.name, file.rules_.size());
        const std::size_t at = known->second;
        if (isNew && !file.included_.empty() && !isDefined(rule)) {
            problem = placeText(file.path_, rule.line) + u": " +
                      tr("no included rule is called \"{0}\"", rule.name);
            return false;
        }
        if (isNew || !file.rules_[at].isIncluded) {
            file.own_.push_back(file.size());
            file.rules_.push_back(std::move(rule));
            return true;
        }
        RuleFile::Rule& included = file.rules_[at];
        file.own_.push_back(static_cast<QorLong>(at));
        if (attributeText(rule.element, kRuleFileAttr).IsEmpty()) {
            const QorXMLNode* const definition =
                definitions_.find(included.scriptFolder, included.name);
            const auto fault =
                definition ? settleOverride(rule.element, *definition) : std::nullopt;
            if (fault) {
                problem = placeText(file.path_, fault->line) + u": " + fault->message;
                return false;
            }
            rule.changedSource = changedSource(file, rule, included, definition);
            inherit(rule.element, included.element);
            rule.scriptFolder = included.scriptFolder;
            rule.isOverride = true;
        }
        included = std::move(rule);
        return true;
    }

    /// A source that the rule gives for its own limits does not hold for those of a site.
    static CStringW changedSource(const RuleFile& file, const RuleFile::Rule& rule,
                                  const RuleFile::Rule& included, const QorXMLNode* definition) {
        CStringW own = attributeText(rule.element, kRuleSourceAttr);
        if (!own.IsEmpty()) return own;
        if (!hasChild(rule.element, u"Parameter") && !hasChild(rule.element, u"Constraint"))
            return included.changedSource;
        const CStringW before =
            !included.changedSource.IsEmpty()
                ? included.changedSource
                : attributeText(definition ? *definition : included.element, kRuleSourceAttr);
        const CStringW place = placeText(file.path_, rule.line);
        return before.IsEmpty() ? place : tr("{0}; changed at {1}", before, place);
    }

    std::size_t depth_ = 0;
    Definitions definitions_;
};

std::unique_ptr<RuleFile> RuleFile::load(const CStringW& path, CStringW& problem) {
    if (corvane::ResourceText(kRuleNode).empty()) {
        problem =
            tr("{0}: the language module of this installation, which holds the names in rule "
               "files, cannot be loaded; \"corvane doctor\" tells more",
               path);
        return nullptr;
    }
    RuleFileReader reader;
    std::unique_ptr<RuleFile> file = reader.read(path);
    problem = reader.problem;
    return file;
}

std::unique_ptr<RuleFile> RuleFile::load(const CStringW& path, Console& console) {
    CStringW problem;
    std::unique_ptr<RuleFile> file = load(path, problem);
    if (!file) console.report(problem);
    return file;
}

CStringW RuleFile::placeOf(QorLong line) const {
    return placeText(path_, line);
}

CStringW RuleFile::title() const {
    return textOf(root_, u"Title");
}

CStringW faultText(const CStringW& path, const corvane::XMLFault& fault) {
    CStringW text = placeText(path, fault.line);
    if (fault.line > 0 && fault.column > 0) text.AppendFormat(u":%d", fault.column);
    text += u": ";
    return text + (fault.message.IsEmpty() ? tr("cannot be read") : fault.message);
}

CStringW attributeText(const QorXMLNode& element, std::uint32_t nameNumber) {
    CStringW text;
    element.GetAttributeValue(corvane::ResourceText(nameNumber), text);
    return text;
}
