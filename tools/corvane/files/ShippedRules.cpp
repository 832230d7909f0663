#include "files/ShippedRules.h"

#include <algorithm>

#include <corvane/app/Installation.h>

namespace shipped {

namespace fs = std::filesystem;

fs::path folder() {
    return fs::path(corvane::GetInstallation().installFolder.Std()) / "share/corvane/rules";
}

std::vector<RuleSet> ruleSets() {
    std::vector<RuleSet> sets;
    std::error_code status;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder(), status))
        if (entry.path().extension() == ".xml")
            sets.push_back({entry.path().stem().string(), entry.path()});
    std::ranges::sort(sets, {}, &RuleSet::name);
    return sets;
}

fs::path fileOf(const std::string& name) {
    for (const RuleSet& set : ruleSets())
        if (set.name == name) return set.file;
    return {};
}

fs::path scriptFolderFor(const fs::path& ruleFile) {
    std::error_code status;
    const fs::path from = fs::absolute(ruleFile, status).parent_path();
    const fs::path scripts = folder() / "scripts";
    const bool isOurs = fs::equivalent(from, folder(), status) ||
                        fs::equivalent(from, scripts, status);  // the index itself
    return isOurs ? scripts : fs::path();
}

}  // namespace shipped
