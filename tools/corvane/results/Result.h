#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "results/Remark.h"

/// What a run of rules found, as plain values. Workers, cache, merged files, baselines and writers
/// exchange these and nothing else; ResultJson.h is their form in files. Texts are UTF-8, lengths
/// and coordinates millimetres, durations seconds. Numbers are finite.
namespace results {

/// Error: the rule could not judge. NotRun: nobody asked it. Waived: every finding that would fail
/// the part is waived.
enum class Verdict { Passed, Failed, Error, NotRun, Waived };

/// Where in the part a finding is.
struct Place {
    enum class Kind { Point, Box, Polyline, Facets, Faces };
    Kind kind = Kind::Point;
    std::string label;
    /// Point: one; Box: the least and the greatest corner; Polyline: in order; Facets and Faces:
    /// three for each triangle. Faces may have none.
    std::vector<std::array<double, 3>> points;
    std::vector<std::int64_t> faces;  ///< Faces: numbers of the part's faces, from 1.

    friend bool operator==(const Place&, const Place&) = default;
};

/// Why a finding counts as no failure.
struct Waiver {
    enum class Kind {
        File,      ///< A person accepted it, in a waiver file.
        Baseline,  ///< It was there before, in the results of a former run.
    };
    Kind kind = Kind::File;
    std::string reason, author;
    std::string expires;  ///< "2027-01-31"; empty: never.
    std::string place;    ///< "FILE:LINE" of the waiver, or the file of the baseline.

    friend bool operator==(const Waiver&, const Waiver&) = default;
};

struct Finding {
    std::string message;
    std::optional<double> measured, limit;
    std::string unit;  ///< Of both: "mm", "deg", "g"; may be empty.
    std::vector<Place> places;
    /// Stays the same when the part is saved again and when other findings come and go.
    std::string fingerprint;
    bool isNote = false;  ///< Is shown and fails nothing.
    std::optional<Waiver> waiver;

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// A rule's parameter with the values that were in force.
struct Parameter {
    using Value = std::variant<bool, std::int64_t, double, std::string>;
    std::int64_t number = 0;
    std::string name;
    bool on = true;
    std::vector<Value> values;

    friend bool operator==(const Parameter&, const Parameter&) = default;
};

/// A file that the rule is made of: its script, its module or an engine.
struct Component {
    std::string name;
    std::string sha256;  ///< 64 hexadecimal digits; empty when the file could not be read.

    friend bool operator==(const Component&, const Component&) = default;
};

struct Severity {
    std::int64_t number = -1;  ///< As in the rule file; -1 without one.
    std::string name;          ///< As configured; empty when the number has none.

    friend bool operator==(const Severity&, const Severity&) = default;
};

/// How one rule judged one part.
struct RuleResult {
    std::string ruleFile;   ///< As it was given.
    std::int64_t line = 0;  ///< Of the rule's element; 0 when unknown.
    std::string name, category, description, source;
    std::string why, how;  ///< From its help page: why it is there, how it is measured.
    Severity severity;
    Verdict verdict = Verdict::NotRun;
    std::vector<Finding> findings;
    /// Why the rule could not judge, or what else is to be said of its run. One line each.
    std::vector<Remark> reasons;
    std::vector<Parameter> parameters;
    std::vector<Component> components;
    double seconds = 0;

    friend bool operator==(const RuleResult&, const RuleResult&) = default;
};

/// The part's surface for viewers. Part of no file of results.
struct Geometry {
    std::string positions;  ///< Base64 of little-endian 32-bit floats: x, y and z of each corner.
    std::string indices;    ///< Base64 of little-endian 32-bit numbers: three corners a triangle.
    std::string faces;      ///< Base64 of such numbers: each triangle's face, from 1; may be empty.
};

/// The results of one part, or of a run without a part: then `path` is empty.
struct PartResult {
    std::int64_t number = 1;  ///< Its place in the whole run, from 1.
    std::string path;         ///< As it was given.
    std::string sha256;       ///< 64 hexadecimal digits.
    std::uint64_t size = 0;   ///< Bytes.
    std::string units;        ///< Assumed for a file that names none: "mm".
    std::vector<RuleResult> rules;
    std::optional<Geometry> geometry;  ///< Only where a writer asks for it.
};

/// What is known before the first part.
struct RunInfo {
    std::string tool, toolVersion;
    std::string started;      ///< UTC: "2026-03-31T08:30:00Z"
    std::int64_t parts = 0;   ///< In the whole run, other shards included.
    std::int64_t shard = 0;   ///< From 1; 0: the run is whole.
    std::int64_t shards = 0;  ///< 0: the run is whole.
    std::vector<Component> ruleFiles;
    std::vector<Severity> severities;  ///< Those with a name, from the gravest.
};

/// Rules by their verdicts.
struct Counts {
    std::int64_t passed = 0, failed = 0, error = 0, notRun = 0, waived = 0;

    std::int64_t all() const { return passed + failed + error + notRun + waived; }
    std::int64_t& of(Verdict verdict);
    void add(const PartResult& part);

    friend bool operator==(const Counts&, const Counts&) = default;
};

/// What is known after the last part.
struct RunEnd {
    Counts counts;
    bool interrupted = false;     ///< Parts or rules are missing because the user ended it.
    std::vector<Remark> notices;  ///< About the run as a whole: a waiver that expired.
    std::string database;         ///< Kind and version of its tables; empty without one.
    double seconds = 0;
};

/// A file of results.
struct Run {
    RunInfo info;
    std::vector<PartResult> parts;
    RunEnd end;
};

}  // namespace results
