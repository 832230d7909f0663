#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "results/Result.h"

/// Findings that people have accepted, from a file in TOML that they edit and version: [[waiver]]
/// with the texts `rule` and `part` (patterns), `reason` and `author`, the date `expires`, and, for
/// one finding alone, `fingerprint`.
class Waivers {
public:
    /// Nothing, with the reason in `problem`, when the file cannot be read or a waiver lacks one of
    /// its keys. `today` is "2026-11-25".
    static std::optional<Waivers> load(const std::string& path, const std::string& today,
                                       std::string& problem);

    /// Notes in each finding of the part that it is waived, and in each rule that all are.
    void apply(results::PartResult& part);

    /// What a person should know once all parts were seen: the waivers that are expired, and those
    /// that matched nothing unless `onlyExpired`.
    std::vector<results::Remark> notices(bool onlyExpired) const;

private:
    struct Entry {
        std::string rule, part, fingerprint;
        results::Waiver waiver;
        bool isExpired = false;
        bool isUsed = false;
    };

    Entry* find(const results::PartResult& part, const results::RuleResult& rule,
                const results::Finding& finding);

    std::vector<Entry> entries_;
};

/// Findings that a former run had: only what is not among them fails.
class Baseline {
public:
    static std::optional<Baseline> load(const std::string& path, std::string& problem);

    /// As Waivers::apply does, for findings that are not waived. A part is looked up by its path,
    /// and when that is unknown by its file's name, unless several parts had it. Of findings that
    /// share a fingerprint as many are known as the former run had.
    void apply(results::PartResult& part) const;

private:
    /// Rule and fingerprint, and how often they occurred.
    using Known = std::map<std::pair<std::string, std::string>, int>;

    const Known* find(const std::string& path) const;

    std::string place_;
    std::map<std::string, Known> byPath_;
    std::map<std::string, std::vector<std::string>> pathsByName_;
};
