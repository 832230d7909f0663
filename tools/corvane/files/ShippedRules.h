#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The rule sets of the installation, in share/corvane/rules: a rule file for each process, and
/// below scripts/ the scripts and the index that define the rules.
namespace shipped {

struct RuleSet {
    std::string name;  ///< "milling": the file's stem.
    std::filesystem::path file;
};

std::filesystem::path folder();
/// By name; empty where the installation has none.
std::vector<RuleSet> ruleSets();
/// The file of a set; empty when there is no such set.
std::filesystem::path fileOf(const std::string& name);
/// The script folder of the rules that a rule file defines: that of the installation for a set of
/// the installation, else empty, which means the configured one.
std::filesystem::path scriptFolderFor(const std::filesystem::path& ruleFile);

}  // namespace shipped
