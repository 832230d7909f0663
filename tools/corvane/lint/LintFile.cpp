#include "lint/LintFile.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <corvane/app/StringResources.h>
#include <corvane/config/ModuleConfiguration.h>
#include <corvane/platform/ComponentRegistration.h>
#include <corvane/platform/Environment.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/scriptrules/RuleIndexScope.h>
#include <corvane/scriptrules/ScriptFolderScope.h>
#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Text.h"
#include "files/ScriptRule.h"
#include "files/ShippedRules.h"
#include "lint/LuaNames.h"

namespace lint {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestScript = 16U << 20U;

std::string narrow(const CStringW& text) {
    return fs::path(text.Std()).string();
}

CStringW wide(const std::string& text) {
    return CStringW(text.c_str());
}

std::optional<std::string> bytesOf(const std::string& path) {
    std::error_code status;
    if (!fs::is_regular_file(path, status)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string valueOf(const Element& element, std::string_view name) {
    const Attribute* attribute = element.attribute(name);
    return attribute ? attribute->value : std::string();
}

Place placeOf(const Element& element, std::string_view name) {
    const Attribute* attribute = element.attribute(name);
    return attribute ? attribute->valuePlace : element.place;
}

/// False for an attribute that an entity of the document is part of.
bool isKnown(const Element& element, std::string_view name) {
    const Attribute* attribute = element.attribute(name);
    return !attribute || attribute->isKnown;
}

std::string lower(const std::string& text) {
    return narrow(wide(text).MakeLower());
}

std::map<std::int64_t, int> parametersOf(const CQorRule& rule) {
    std::map<std::int64_t, int> kinds;
    for (QorLong i = 0; i < rule.m_Parameters.GetSize(); ++i)
        if (const CQorParamStorage* storage = rule.m_Parameters.GetAt(i))
            kinds.emplace(storage->m_lId, storage->m_Type);
    return kinds;
}

/// The names by which the script finds its parameters, those that are off included.
std::set<std::string> parameterNames(QorXMLNode& node) {
    ScriptRule rule;
    rule.PopulateScriptRule(&node);
    for (QorLong i = 0; i < rule.m_Parameters.GetSize(); ++i) {
        const CQorParamStorage* storage = rule.m_Parameters.GetAt(i);
        if (storage->m_Type == Type_CStringPtr)
            static_cast<CQorParameter<CStringW*>*>(storage->m_pParameter)->m_bStatus = true;
    }
    std::set<std::string> names;
    for (const corvane::ScriptParameter& parameter : rule.GetScriptParameters(CStringW()))
        names.insert(narrow(parameter.name));
    return names;
}

}  // namespace

Linter::Linter(const std::vector<CStringW>& moduleFolders, Vocabulary words)
    : modules_(moduleFolders), words_(std::move(words)) {
    const std::u16string module = corvane::FindComponent(u"QorScriptHost.ScriptProcessor").module;
    if (!module.empty()) host_ = corvane::LoadedModule(module);
}

const Linter::Index* Linter::index(const std::string& folder) {
    const auto [known, isNew] = indexes_.try_emplace(folder);
    std::optional<Index>& kept = known->second;
    if (!isNew) return kept ? &*kept : nullptr;
    std::optional<CStringW> place;
    if (folder.empty())
        place = corvane::GetModuleConfiguration().scriptFolder;
    else
        place = wide(folder);
    if (!place) return nullptr;
    Index index;
    index.folder = narrow(shownPath(*place));
    index.path = index.folder + "/UserDefinedFile.xml";
    QorXMLDocument document;
    if (const std::optional<std::string> bytes = bytesOf(index.path);
        bytes && document.LoadFromFile(wide(index.path)))
        index.root = readSource(*bytes);
    kept = std::move(index);
    for (const Element& entry : kept->root.children)
        if (entry.name == "Rule") kept->entries.emplace(lower(valueOf(entry, "Name")), &entry);
    return &*kept;
}

std::vector<Problem> Linter::checkFile(const std::string& path) {
    Report report(path);
    const std::optional<std::string> bytes = bytesOf(path);
    QorXMLDocument document;
    if (!bytes) {
        report.add(kUnreadable, {}, trUtf8("there is no such file, or it cannot be read"),
                   trUtf8("Correct the path."));
    } else if (!document.LoadFromFile(wide(path))) {
        const corvane::XMLFault fault = corvane::LastXMLFault(document);
        report.add(kUnreadable, {fault.line, fault.column},
                   fault.message.IsEmpty() ? trUtf8("it cannot be read") : narrow(fault.message));
    } else {
        const Element root = readSource(*bytes);
        checkForm(root, report);
        checkRules(path, root, report);
    }
    return report.sorted();
}

std::vector<Problem> Linter::checkIndex() {
    const Index* found = index({});
    std::error_code status;
    if (!found || !fs::exists(found->path, status)) return {};
    return checkFile(found->path);
}

void Linter::checkRules(const std::string& path, const Element& root, Report& report) {
    const std::unique_ptr<RuleFile> file = resolve(path, root, report);
    if (!file) return;
    const std::string own = shipped::scriptFolderFor(path).string();
    const Index* ownIndex = index(own);
    std::error_code status;
    const bool isIndex = ownIndex && fs::equivalent(path, ownIndex->path, status);
    checkRepetition(root, isIndex, report);
    // The file has changed since, or an entity holds rules, which have no place of their own.
    if (std::ranges::count(root.children, "Rule", &Element::name) != std::ssize(file->own()))
        return;
    const corvane::RuleIndexScope indexes;
    std::size_t count = 0;
    for (const Element& rule : root.children) {
        if (rule.name != "Rule") continue;
        const QorLong at = file->own()[count++];
        QorXMLNode& node = file->element(at);
        if (!isKnown(rule, "Name") || !isKnown(rule, "File")) continue;
        const CStringW module = attributeText(node, corvane::resource::kRuleFileAttr);
        RuleKnowledge knowledge = learn(rule, module, report);
        knowledge.isOverride = file->isOverride(at);
        checkValues(rule, knowledge, words_, report);
        if (knowledge.kind != RuleKnowledge::Kind::Script) continue;
        const CStringW folder = file->scriptFolder(at);
        const corvane::ScriptFolderScope scripts(folder);
        const Index* known = index(narrow(folder));
        Definition definition{&rule, path, &rule};
        if (known && !isIndex) {
            const auto entry = known->entries.find(lower(valueOf(rule, "Name")));
            if (entry != known->entries.end()) definition = {entry->second, known->path, &rule};
        }
        // The included rule names the script.
        if (knowledge.isOverride && definition.element == &rule) continue;
        checkScript(definition, known, node, report);
    }
}

namespace {

/// The problem of a rule file begins with its place, "FILE:LINE: ".
void reportAtLine(const std::string& path, const std::string& problem, Place place,
                  Report& report) {
    const std::string start = path + ":";
    std::size_t rest = 0;
    if (problem.starts_with(start)) {
        const char* const from = problem.data() + start.size();
        std::int64_t line = 0;
        const auto [end, status] = std::from_chars(from, problem.data() + problem.size(), line);
        if (status == std::errc() && std::string_view(end).starts_with(": ")) {
            place = {line, 1};
            rest = static_cast<std::size_t>(end - problem.data()) + 2;
        }
    }
    report.add(kUnreadable, place, problem.substr(rest));
}

}  // namespace

std::unique_ptr<RuleFile> Linter::resolve(const std::string& path, const Element& root,
                                          Report& report) {
    CStringW problem;
    std::unique_ptr<RuleFile> file = RuleFile::load(wide(path), problem);
    if (file) return file;
    const bool includes = std::ranges::any_of(root.children, [](const Element& child) {
        return child.name == "Include" || child.name == "Exclude";
    });
    if (includes)
        reportAtLine(path, narrow(problem), root.place, report);
    else
        report.add(kNoRule, root.place, trUtf8("<{0}> has no child <{1}>", root.name, "Rule"));
    return nullptr;
}

void Linter::checkRepetition(const Element& root, bool isIndex, Report& report) {
    std::map<std::string, const Element*> names;
    for (const Element& rule : root.children) {
        const std::string name = valueOf(rule, "Name");
        if (rule.name != "Rule" || name.empty() || !isKnown(rule, "Name")) continue;
        const auto [first, isNew] = names.try_emplace(lower(name), &rule);
        if (!isNew)
            report.add(isIndex ? kRepeatedEntry : kRepeatedRule, placeOf(rule, "Name"),
                       trUtf8("\"{0}\" is also the name of the rule on line {1}", name,
                              first->second->place.line));
    }
}

RuleKnowledge Linter::learn(const Element& rule, const CStringW& file, Report& report) {
    RuleKnowledge knowledge;
    if (!RuleModules::isModuleName(file)) {
        knowledge.kind = RuleKnowledge::Kind::Script;
        return knowledge;
    }
    knowledge.kind = RuleKnowledge::Kind::Compiled;
    results::Remark problem("");
    const std::unique_ptr<CQorRule> made(
        modules_.makeRule(file, wide(valueOf(rule, "Name")), problem));
    if (made)
        knowledge.parameters = parametersOf(*made);
    else
        report.add(kNoModuleRule, placeOf(rule, "File"), problem.shown);
    return knowledge;
}

void Linter::sayIfNoScriptCanRun(const Index* known, const Element& rule, Report& report) {
    if ((known && host_) || saidNoScripts_) return;
    saidNoScripts_ = true;
    report.add(
        kNoScriptFolder, rule.place,
        known ? trUtf8("no script host is installed") : trUtf8("no script folder is configured"),
        known ? trUtf8("Install the script host, or register it anew.") : std::string());
}

void Linter::checkScript(const Definition& definition, const Index* known, QorXMLNode& node,
                         Report& report) {
    sayIfNoScriptCanRun(known, *definition.rule, report);
    if (!known) return;
    const std::string script = valueOf(*definition.element, "File");
    const Place place = placeOf(*definition.element, "File");
    const std::string name = valueOf(*definition.rule, "Name");
    const std::set<std::string> engines = checkEngines(definition, report);
    if (script.empty()) {
        const bool isOwn = definition.element == definition.rule;
        std::vector<std::string> names;
        for (const auto& [lowerName, entry] : known->entries)
            names.push_back(valueOf(*entry, "Name"));
        report.add(kNoIndexEntry, placeOf(*definition.rule, "Name"),
                   isOwn
                       ? trUtf8("the index has no rule \"{0}\", and the rule names no script", name)
                       : trUtf8("the entry of \"{0}\" in the index names no script", name),
                   isOwn ? didYouMean(name, names) : std::string());
    } else if (leavesScriptFolder(wide(script))) {
        report.add(kOutsideScript, place, trUtf8("\"{0}\" leads out of the script folder", script),
                   {}, definition.file);
    } else {
        const std::string path = known->folder + "/" + narrow(shownPath(wide(script)));
        std::error_code status;
        if (fs::is_regular_file(path, status))
            checkScriptText(path, definition, engines, node, report);
        else
            report.add(kNoScript, place, trUtf8("there is no script {0}", path), {},
                       definition.file);
    }
}

void Linter::checkScriptText(const std::string& path, const Definition& definition,
                             const std::set<std::string>& engines, QorXMLNode& node,
                             Report& report) {
    std::string key = path;
    for (const std::string& engine : engines)
        key += '\n' + engine;
    const std::set<std::string> names = parameterNames(node);
    for (const std::string& name : names)
        key += "\np." + name;
    if (!checkedScripts_.insert(key).second) return;

    const std::optional<std::string> bytes = bytesOf(path);
    if (!bytes || bytes->size() > kLargestScript) {
        report.add(kNoScript, {}, trUtf8("the script cannot be read, or is larger than 16 MiB"), {},
                   path);
        return;
    }
    const std::string text = utf8Of(*bytes);
    if (wide(text).Find(u'\xFFFD') >= 0 && text.find("\xEF\xBF\xBD") == text.npos)
        report.add(kScriptEncoding, {}, trUtf8("the script is no UTF-8"), {}, path);
    compile(path, text, report);

    const LuaNames used = namesOf(text);
    std::vector<std::string> known(hostNames().begin(), hostNames().end());
    known.insert(known.end(), engines.begin(), engines.end());
    std::set<std::string> said;
    for (const LuaName& global : used.globals)
        if (!hostNames().contains(global.name) && !engines.contains(global.name) &&
            said.insert(global.name).second)
            report.add(kUnknownGlobal, {global.line, global.column},
                       trUtf8("nothing is called \"{0}\"", global.name),
                       didYouMean(global.name, known), path);
    const std::vector<std::string> parameters(names.begin(), names.end());
    for (const LuaName& parameter : used.parameters)
        if (!names.contains(parameter.name) && said.insert("params." + parameter.name).second)
            report.add(kUnknownParam, {parameter.line, parameter.column},
                       trUtf8("the rule \"{0}\" has no parameter \"{1}\"",
                              valueOf(*definition.rule, "Name"), parameter.name),
                       didYouMean(parameter.name, parameters), path);
}

std::set<std::string> Linter::checkEngines(const Definition& definition, Report& report) {
    std::set<std::string> names;
    const Element* engines = definition.element->child("Engines");
    if (!engines) return names;
    for (const Element& engine : engines->children) {
        if (engine.name != "Engine" || !isKnown(engine, "GUID") || !isKnown(engine, "LCID"))
            continue;
        const std::string guid = valueOf(engine, "GUID");
        CStringW path;
        TypeLibDetails library{CStringW()};
        if (!library.FindTypeLibFile(path, wide(guid), wide(valueOf(engine, "MajorVersion")),
                                     wide(valueOf(engine, "MinorVersion")),
                                     wide(valueOf(engine, "LCID")))) {
            report.add(kNoEngine, placeOf(engine, "GUID"),
                       guid.empty() ? trUtf8("the engine has no GUID")
                                    : trUtf8("no type library {0} is registered", guid),
                       {}, definition.file);
            continue;
        }
        const std::string file = narrow(shownPath(path));
        names.insert(fs::path(file).stem().string());
        library.fileName = path;
        if (!library.ReadTypeLibAttributes())
            report.add(kBadLibrary, placeOf(engine, "GUID"),
                       trUtf8("{0} is missing or no type library", file), {}, definition.file);
    }
    return names;
}

void Linter::compile(const std::string& path, const std::string& text, Report& report) {
    using Check =
        int (*)(const char* text, std::size_t size, int* line, char* message, std::size_t capacity);
    const auto check = host_.function<Check>("CorvaneCheckScript");
    if (!check) return;
    int line = 0;
    char message[512] = "";
    if (check(text.data(), text.size(), &line, message, sizeof message) == 0)
        report.add(kScriptSyntax, {line, line > 0 ? 1 : 0}, message, {}, path);
}

std::vector<Problem> Linter::checkSettings() {
    struct Limit {
        const char16_t* variable;
        std::int64_t most;
    };
    constexpr Limit kLimits[] = {{u"CORVANE_SCRIPT_MAX_INSTRUCTIONS", 1'000'000'000'000'000},
                                 {u"CORVANE_SCRIPT_MAX_SECONDS", 86'400},
                                 {u"CORVANE_SCRIPT_MAX_MEMORY_MB", 65'536}};
    Report report("environment");
    for (const Limit& limit : kLimits) {
        const std::string text = narrow(CStringW(corvane::GetEnvironmentText(limit.variable)));
        if (text.empty()) continue;
        const bool isNumber = text.size() < 17 && text.find_first_not_of("0123456789") == text.npos;
        if (isNumber && std::stoll(text) >= 1 && std::stoll(text) <= limit.most) continue;
        report.add(kBadSetting, {}, trUtf8("{0} is {1}", limit.variable, "\"" + text + "\""),
                   trUtf8("Write a whole number from 1 to {0}.", limit.most));
    }
    return report.sorted();
}

}  // namespace lint
