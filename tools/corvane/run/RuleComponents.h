#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <corvane/text/CStringW.h>

#include "files/RuleFile.h"
#include "run/Hash.h"
#include "run/HelpPage.h"

struct PlannedRule;

/// Finds what a rule is made of, its texts and its files, without loading or running any of it.
class RuleComponents {
public:
    explicit RuleComponents(const std::vector<CStringW>& moduleFolders);

    /// Fills in what the rule's element, and the index for a user-defined rule, say of it.
    void describe(const RuleFile& file, PlannedRule& rule);

    FileHashes& hashes() { return hashes_; }

private:
    void describeModuleRule(const QorXMLNode& element, PlannedRule& rule);
    void describeScriptRule(QorXMLNode& element, const CStringW& ownFolder, PlannedRule& rule);
    void addFile(PlannedRule& rule, const std::filesystem::path& path);
    void addFilesOfStem(PlannedRule& rule, const std::filesystem::path& typeLibrary);

    std::vector<CStringW> moduleFolders_;
    std::optional<CStringW> scriptFolder_;
    FileHashes hashes_;
    HelpPages pages_;
};
