#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "results/Result.h"

/// Results of rules by what they depend on, in a folder that any number of runs share. An entry is
/// a file named after the hash of its inputs, written beside its place and renamed into it, with a
/// hash of its own content: one that is damaged is not there.
class Cache {
public:
    explicit Cache(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// `key` is all that decides the result.
    std::optional<results::RuleResult> find(const std::string& key) const;
    /// False when it cannot be kept.
    bool keep(const std::string& key, const results::RuleResult& result) const;

    /// Only what a rule judged is worth keeping; why it could not judge may pass.
    static bool isWorthKeeping(const results::RuleResult& result);

private:
    std::filesystem::path pathOf(const std::string& key) const;

    std::filesystem::path folder_;
};
