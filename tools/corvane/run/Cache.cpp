#include "run/Cache.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "results/OutputFile.h"
#include "results/ResultJson.h"
#include "run/Hash.h"

namespace fs = std::filesystem;
using results::RuleResult;
using results::Verdict;

// An entry is two lines: the hash of the second one, and the result.

fs::path Cache::pathOf(const std::string& key) const {
    // Folders of all entries at once grow slow.
    const std::string name = hashOf(key);
    return folder_ / name.substr(0, 2) / (name.substr(2) + ".json");
}

std::optional<RuleResult> Cache::find(const std::string& key) const {
    std::ifstream file(pathOf(key), std::ios::binary);
    std::string hash;
    std::string line;
    if (!std::getline(file, hash) || !std::getline(file, line) || hashOf(line) != hash) return {};
    try {
        return results::ruleFrom(results::Json::parse(line));
    } catch (const nlohmann::json::exception&) {
        return {};  // from another version of this program
    }
}

bool Cache::keep(const std::string& key, const RuleResult& result) const {
    const fs::path path = pathOf(key);
    std::error_code status;
    fs::create_directories(path.parent_path(), status);
    results::OutputFile file(path.string());
    const std::string line = results::lineOf(results::toJson(result));
    file.stream() << hashOf(line) << '\n' << line << '\n';
    return file.commit();
}

bool Cache::isWorthKeeping(const RuleResult& result) {
    return result.verdict == Verdict::Passed || result.verdict == Verdict::Failed;
}
