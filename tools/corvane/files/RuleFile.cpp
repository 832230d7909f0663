#include "files/RuleFile.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include <corvane/app/StringResources.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"
#include "files/RuleModules.h"
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

bool hasChild(const QorXMLNode& element, const char16_t* name) {
    return !std::ranges::empty(corvane::ChildElements(element, name));
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
                        corvane::XMLLine(element)}))
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
        std::set<const RuleFile*> own;
        std::set<CStringW> all;
        for (const QorXMLNode& element : corvane::ChildElements(file.root_, u"Include")) {
            const RuleFile* const other = included(file, element);
            if (!other) return false;
            if (!own.insert(other).second) continue;
            if (all.insert(other->path_).second) file.included_.push_back(other->path_);
            std::ranges::copy_if(other->included_, std::back_inserter(file.included_),
                                 [&all](const CStringW& one) { return all.insert(one).second; });
            for (const RuleFile::Rule& rule : other->rules_) {
                if (!places.try_emplace(rule.name, file.rules_.size()).second) continue;
                file.rules_.push_back(rule);
                file.rules_.back().line = corvane::XMLLine(element);
                file.rules_.back().isIncluded = true;
            }
        }
        return true;
    }

    /// The file that an element includes; null when something is wrong.
    const RuleFile* included(const RuleFile& file, const QorXMLNode& element) {
        const CStringW set = textOf(element, u"Set");
        const CStringW name = textOf(element, u"File");
        const fs::path path = set.IsEmpty() ? fs::path(file.path_.Std()).parent_path() /
                                                  fs::path(shownPath(name).Std())
                                            : shipped::fileOf(set.ToUtf8());
        CStringW fault;
        if (set.IsEmpty() == name.IsEmpty())
            fault = tr("an <Include> has a Set or a File");
        else if (path.empty())
            fault = tr("the installation has no rule set \"{0}\"", set);
        else if (depth_ == kDeepestInclude)
            fault = tr("files include each other too deeply");
        else if (const RuleFile* const other = readOnce(path))
            return other;
        else
            fault = problem;
        failAt(file.path_, element, fault);
        return nullptr;
    }

    /// Files that each include the next one many times would take for ever.
    const RuleFile* readOnce(const fs::path& path) {
        std::error_code status;
        const fs::path key = fs::canonical(path, status);
        const auto known = read_.find(key);
        if (known != read_.end()) return known->second.get();
        ++depth_;
        std::unique_ptr<RuleFile> file = read(path.u16string());
        --depth_;
        return file ? read_.emplace(key, std::move(file)).first->second.get() : nullptr;
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
            const bool isCompiled =
                RuleModules::isModuleName(attributeText(included.element, kRuleFileAttr));
            const QorXMLNode* const entry =
                isCompiled ? nullptr : definitions_.find(included.scriptFolder, included.name);
            const QorXMLNode& definition = entry ? *entry : included.element;
            if (const auto fault = settleOverride(rule.element, definition, !isCompiled)) {
                problem = placeText(file.path_, fault->line) + u": " + fault->message;
                return false;
            }
            rule.changedSource = changedSource(file, rule, included, definition);
            inherit(rule.element, included.element);
            rule.name = included.name;
            rule.scriptFolder = included.scriptFolder;
            rule.isOverride = true;
        }
        included = std::move(rule);
        return true;
    }

    /// A source that the rule gives for its own limits does not hold for those of a site.
    static results::Remark changedSource(const RuleFile& file, const RuleFile::Rule& rule,
                                         const RuleFile::Rule& included,
                                         const QorXMLNode& definition) {
        const CStringW own = attributeText(rule.element, kRuleSourceAttr);
        if (!own.IsEmpty()) return own.ToUtf8();
        if (!hasChild(rule.element, u"Parameter") && !hasChild(rule.element, u"Constraint"))
            return included.changedSource;
        results::Remark before = included.changedSource;
        if (before.text.empty()) before = attributeText(definition, kRuleSourceAttr).ToUtf8();
        const std::string place = placeText(file.path_, rule.line).ToUtf8();
        if (before.text.empty()) return place;
        return {remark("{0}; changed at {1}", before.text, place).text,
                trUtf8("{0}; changed at {1}", before.shown, place)};
    }

    std::size_t depth_ = 0;
    std::map<fs::path, std::unique_ptr<RuleFile>> read_;
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
