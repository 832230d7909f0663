#include "run/Plan.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <set>

#include <corvane/app/StringResources.h>
#include <corvane/platform/SteadyFilesScope.h>
#include <corvane/scriptrules/RuleIndexScope.h>

#include "Pattern.h"
#include "Text.h"
#include "language/Messages.h"
#include "run/FileList.h"
#include "run/RuleComponents.h"

namespace {

namespace fs = std::filesystem;
using namespace corvane::resource;

constexpr std::string_view kRuleFileEndings[] = {".xml"};
constexpr std::string_view kPartEndings[] = {".stl", ".step", ".stp", ".iges", ".igs", ".brep",
                                             ".brp", ".obj",  ".3mf", ".ply",  ".off"};

class Planner {
public:
    Planner(const RunOptions& options, const Severities& severities, Console& console)
        : options_(options),
          severities_(severities),
          console_(console),
          components_(options.folders.modules) {}

    std::optional<Plan> make() {
        loadRuleFiles();
        findParts();
        if (!takeShard()) return {};
        if (!plan_.files.empty() && plan_.rules.empty()) {
            console_.report(tr("no rule fits --rule, --category and --severity"));
            return {};
        }
        return std::move(plan_);
    }

private:
    void reportAll(const FileList& list) {
        for (const std::string& problem : list.problems) {
            console_.report(wide(problem));
            plan_.hasUnreadable = true;
        }
        for (const std::string& note : list.notes)
            console_.report(wide(note));
    }

    void loadRuleFiles() {
        const FileList list = expandFiles(options_.ruleFiles, kRuleFileEndings);
        reportAll(list);
        for (const std::string& path : list.files) {
            std::unique_ptr<RuleFile> file;
            if (hasGoodName(path)) file = RuleFile::load(wide(path), console_);
            if (!file) {
                plan_.hasUnreadable = true;
                continue;
            }
            plan_.ruleFiles.push_back({path, components_.hashes().of(path)});
            for (QorLong i = 0; i < file->size(); ++i)
                addRule(*file, path, i);
            plan_.files.push_back(std::move(file));
        }
    }

    /// Workers, scripts and results hold names as text.
    bool hasGoodName(const std::string& path) {
        if (isUtf8(path)) return true;
        console_.report(
            tr("{0} is not UTF-8; the names of rule files, scripts and parts must be", path));
        return false;
    }

    void addRule(const RuleFile& file, const std::string& path, QorLong element) {
        PlannedRule rule;
        rule.file = plan_.files.size();
        rule.element = element;
        rule.blank.ruleFile = path;
        components_.describe(file, rule);
        rule.blank.severity.name = severities_.nameOf(rule.blank.severity.number);
        if (!isSelected(rule)) return;
        if (options_.eachOnce && !identities_.insert(rule.identity).second) return;
        plan_.rules.push_back(std::move(rule));
    }

    static bool fitsAny(const std::vector<std::string>& patterns, const std::string& text) {
        return std::ranges::any_of(
            patterns, [&](const std::string& pattern) { return fitsName(pattern, text); });
    }

    bool isSelected(const PlannedRule& rule) const {
        if (!options_.rules.empty() && !fitsAny(options_.rules, rule.blank.name)) return false;
        const auto isWanted = [&](const std::string& severity) {
            return severities_.find(severity) == rule.blank.severity.number;
        };
        if (!options_.severities.empty() && std::ranges::none_of(options_.severities, isWanted))
            return false;
        if (options_.categories.empty() || fitsAny(options_.categories, rule.blank.category))
            return true;
        return std::ranges::any_of(rule.categories, [&](const CStringW& category) {
            return fitsAny(options_.categories, category.ToUtf8());
        });
    }

    void findParts() {
        if (options_.parts.empty()) {
            plan_.parts.emplace_back();
            return;
        }
        const FileList list = expandFiles(options_.parts, kPartEndings);
        reportAll(list);
        for (const std::string& path : list.files)
            addPart(path);
    }

    void addPart(const std::string& path) {
        const auto number = static_cast<std::int64_t>(++counted_);
        const std::string fullPath = fs::absolute(path).string();
        std::error_code status;
        const bool isFile = fs::is_regular_file(path, status);
        if (!isFile)
            console_.report(fs::exists(path, status) ? tr("{0} is no file", path)
                                                     : tr("{0}: no such part", path));
        if (isFile && hasGoodName(fullPath))
            plan_.parts.push_back({number, path, fullPath});
        else
            plan_.hasUnreadable = true;
    }

    /// Parts are dealt out in turn, so that the large ones of a folder do not fall to one machine.
    bool takeShard() {
        plan_.allParts =
            std::max<std::int64_t>(counted_, static_cast<std::int64_t>(plan_.parts.size()));
        if (options_.shard.empty()) return true;
        const char* end = options_.shard.data() + options_.shard.size();
        const auto first = std::from_chars(options_.shard.data(), end, plan_.shard);
        const bool divided = first.ec == std::errc() && first.ptr != end && *first.ptr == '/';
        const auto second = divided ? std::from_chars(first.ptr + 1, end, plan_.shards) : first;
        if (!divided || second.ec != std::errc() || second.ptr != end || plan_.shard < 1 ||
            plan_.shard > plan_.shards) {
            console_.report(tr("--shard takes I/N with I from 1 to N, as in 2/4"));
            return false;
        }
        std::erase_if(plan_.parts, [&](const PlannedPart& part) {
            return (part.number - 1) % plan_.shards != plan_.shard - 1;
        });
        return true;
    }

    const corvane::SteadyFilesScope steady_;
    const corvane::RuleIndexScope index_;
    const RunOptions& options_;
    const Severities& severities_;
    Console& console_;
    RuleComponents components_;
    Plan plan_;
    std::set<std::string> identities_;
    std::int64_t counted_ = 0;
};

}  // namespace

std::optional<Plan> makePlan(const RunOptions& options, const Severities& severities,
                             Console& console) {
    return Planner(options, severities, console).make();
}
