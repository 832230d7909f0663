#pragma once

#include <iosfwd>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "ResultWriter.h"

/// The form of results in files and between processes. corvane-results-1.schema.json describes it.
namespace results {

/// An object whose members keep the order in which they were added.
using Json = nlohmann::ordered_json;

inline constexpr const char* kFormatName = "corvane-results";
inline constexpr int kFormatVersion = 1;

Json toJson(const RunInfo& info);
Json toJson(const PartResult& part);  ///< Without its geometry.
Json toJson(const RuleResult& rule);
Json toJson(const RunEnd& end);

// What toJson gave. Raise nlohmann::json::exception for anything else; members that are not known
// are passed over.
RunInfo runInfoFrom(const Json& json);
PartResult partFrom(const Json& json);
RuleResult ruleFrom(const Json& json);
RunEnd runEndFrom(const Json& json);

/// One line of text without line ends.
std::string lineOf(const Json& json);

std::string_view nameOf(Verdict verdict);

/// Writes a file of results; one part a line, so that files of thousands of parts can be compared.
std::unique_ptr<ResultWriter> makeJsonWriter(std::ostream& out);

/// Reads such a file. Empty, with the reason in `problem`, when it is none.
std::optional<Run> readResults(std::istream& in, std::string& problem);

}  // namespace results
