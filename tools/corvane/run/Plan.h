#pragma once

#include <memory>
#include <vector>

#include "Console.h"
#include "files/RuleFile.h"
#include "results/Result.h"
#include "run/RunOptions.h"
#include "run/Severities.h"

/// A rule as its file and the index of user-defined rules tell it. No module is loaded for it and
/// no script is run.
struct PlannedRule {
    /// All that is known before the rule has run: what takes its place when a worker loses it.
    results::RuleResult blank;
    std::size_t file = 0;              ///< Place in Plan::files.
    QorLong element = 0;               ///< Place in that file.
    std::vector<CStringW> categories;  ///< Further categories.
    /// Whatever of its files, its element and the index decides how it judges, for a cache.
    std::string identity;
};

struct PlannedPart {
    std::int64_t number = 1;
    std::string path;      ///< As it was given; empty for a run without a part.
    std::string fullPath;  ///< Absolute.
};

/// What a run is to do.
struct Plan {
    std::vector<std::unique_ptr<RuleFile>> files;
    std::vector<results::Component> ruleFiles;
    std::vector<PlannedRule> rules;
    std::vector<PlannedPart> parts;
    std::int64_t allParts = 0;  ///< Parts of other shards included.
    std::int64_t shard = 0, shards = 0;
    bool hasUnreadable = false;  ///< A file or part could not be read, which was reported.
};

/// Reports what cannot be read. Nothing when the options contradict what there is: a shard that
/// is none, or a selection that leaves no rule.
std::optional<Plan> makePlan(const RunOptions& options, const Severities& severities,
                             Console& console);
