#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Console.h"
#include "results/Result.h"

/// The names of severities and their order. A rule file knows numbers only; what they mean is a
/// convention of the site: 1 critical, 2 major, 3 minor, 4 info, unless a file says otherwise.
class Severities {
public:
    Severities();
    explicit Severities(std::vector<results::Severity> all) : all_(std::move(all)) {}

    /// Reads a file in TOML: [[severity]] with `number` and `name`, from the gravest. Nothing, with
    /// the reason in `problem`, when it is no such file.
    static std::optional<Severities> load(const std::string& path, std::string& problem);

    const std::vector<results::Severity>& all() const { return all_; }

    /// Empty for a number without a name.
    std::string nameOf(std::int64_t number) const;

    /// The severity that a person names by its name, case ignored, or its number.
    std::optional<std::int64_t> find(std::string_view text) const;

    /// Whether one severity is at least as grave as another. A number without a name counts as the
    /// gravest, so that a slip in a rule file opens no gate.
    bool isAtLeast(std::int64_t number, std::int64_t limit) const;

private:
    std::size_t rank(std::int64_t number) const;

    std::vector<results::Severity> all_;
};

/// The names of a file; without one, of Settings/Severities.toml in the data folder where that is.
/// Nothing, reported, when they cannot be read.
std::optional<Severities> findSeverities(const std::string& file, Console& console);

/// Sets `limit` to the severity that the option --fail-on names, if it does. False, reported, when
/// there is no such severity with a name.
bool findLimit(const Severities& severities, const std::string& failOn,
               std::optional<std::int64_t>& limit, Console& console);
