#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <corvane/platform/LoadedModule.h>

#include "files/RuleFile.h"
#include "files/RuleModules.h"
#include "lint/Form.h"
#include "lint/Report.h"

class QorXMLNode;

namespace lint {

/// Checks rule files against what the installation has: rule modules, the index of user-defined
/// rules, scripts and engines. Each of these is read once for all files.
class Linter {
public:
    Linter(const std::vector<CStringW>& moduleFolders, Vocabulary words);

    /// All problems of a rule file or an index, and of the scripts that its rules run.
    std::vector<Problem> checkFile(const std::string& path);
    /// The problems of the index of user-defined rules; none where no index is configured.
    std::vector<Problem> checkIndex();
    /// The problems of the settings, wherever they are.
    static std::vector<Problem> checkSettings();

private:
    /// A rule as its definition has it, with where that is.
    struct Definition {
        const Element* element = nullptr;
        std::string file;
        const Element* rule = nullptr;  ///< The element of the rule file, which may be the same.
    };
    struct Index {
        std::string path;
        std::string folder;
        Element root;
        std::map<std::string, const Element*>
            entries;  ///< By lower-case names; the first one counts.
    };

    void checkRules(const std::string& path, const Element& root, Report& report);
    /// What a rule file takes from others; nothing when it cannot, which is reported.
    std::unique_ptr<RuleFile> resolve(const std::string& path, const Element& root, Report& report);
    void checkRepetition(const Element& root, bool isIndex, Report& report);
    /// Of a rule in that file, which an override has from the included rule.
    RuleKnowledge learn(const Element& rule, const CStringW& file, Report& report);
    /// What keeps scripts from running is said once for all rules.
    void sayIfNoScriptCanRun(const Index* known, const Element& rule, Report& report);
    void checkScript(const Definition& definition, const Index* known, QorXMLNode& node,
                     Report& report);
    void checkScriptText(const std::string& path, const Definition& definition,
                         const std::set<std::string>& engines, QorXMLNode& node, Report& report);
    std::set<std::string> checkEngines(const Definition& definition, Report& report);
    void compile(const std::string& path, const std::string& text, Report& report);
    /// Of a script folder; of the configured one for an empty name.
    const Index* index(const std::string& folder);

    RuleModules modules_;
    Vocabulary words_;
    corvane::LoadedModule host_;
    std::map<std::string, std::optional<Index>> indexes_;
    bool saidNoScripts_ = false;
    std::set<std::string> checkedScripts_;  ///< With their engines: what was said once is enough.
};

}  // namespace lint
