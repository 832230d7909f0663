#include "lint/LintWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "results/SarifWriter.h"

namespace lint {

namespace {

using Json = nlohmann::ordered_json;

/// File names and texts may hold any bytes.
std::string dumped(const Json& json) {
    return json.dump(1, '\t', false, Json::error_handler_t::replace);
}

const char* gravityOf(const Code& code) {
    return code.isError ? "error" : "warning";
}

Json locationOf(const Problem& problem) {
    Json physical{{"artifactLocation", {{"uri", results::uriOf(problem.file)}}}};
    if (problem.place.line > 0) {
        physical["region"] = {{"startLine", problem.place.line}};
        if (problem.place.column > 0) physical["region"]["startColumn"] = problem.place.column;
    }
    return {{"physicalLocation", std::move(physical)}};
}

/// A sentence: with a capital and an end mark.
std::string sentence(std::string text) {
    if (text.empty()) return text;
    if (text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 32);
    if (text.back() != '.' && text.back() != '?') text += '.';
    return text;
}

}  // namespace

void writeText(std::ostream& out, std::span<const Problem> problems) {
    for (const Problem& problem : problems) {
        out << problem.file;
        if (problem.place.line > 0) out << ':' << problem.place.line;
        if (problem.place.column > 0) out << ':' << problem.place.column;
        out << ": " << (problem.code->isError ? trUtf8("error") : trUtf8("warning")) << ": "
            << problem.message << " [" << problem.code->id << ' ' << problem.code->name << "]\n    "
            << trUtf8(problem.code->consequence) << ' ' << problem.mend << '\n';
    }
}

void writeJson(std::ostream& out, std::span<const Problem> problems) {
    Json list = Json::array();
    for (const Problem& problem : problems) {
        Json one{{"file", problem.file}};
        if (problem.place.line > 0) one["line"] = problem.place.line;
        if (problem.place.column > 0) one["column"] = problem.place.column;
        one["code"] = problem.code->id;
        one["name"] = problem.code->name;
        one["gravity"] = gravityOf(*problem.code);
        one["message"] = problem.message;
        one["consequence"] = problem.code->consequence.english();
        one["mend"] = problem.mend;
        list.push_back(std::move(one));
    }
    out << dumped({{"format", "corvane-lint"}, {"version", 1}, {"problems", std::move(list)}})
        << '\n';
}

void writeSarif(std::ostream& out, std::span<const Problem> problems, std::string_view version) {
    Json rules = Json::array();
    for (const Code* code : allCodes())
        rules.push_back({{"id", code->id},
                         {"name", code->name},
                         {"shortDescription", {{"text", code->consequence.english()}}},
                         {"help", {{"text", code->mend.english()}}},
                         {"defaultConfiguration", {{"level", gravityOf(*code)}}}});
    Json results = Json::array();
    for (const Problem& problem : problems) {
        const auto index = std::ranges::find(allCodes(), problem.code) - allCodes().begin();
        results.push_back({{"ruleId", problem.code->id},
                           {"ruleIndex", index},
                           {"level", gravityOf(*problem.code)},
                           {"message", {{"text", sentence(problem.message) + " " + problem.mend}}},
                           {"locations", Json::array({locationOf(problem)})}});
    }
    const Json driver{
        {"name", "corvane lint"}, {"version", std::string(version)}, {"rules", std::move(rules)}};
    Json run{{"tool", {{"driver", driver}}},
             {"columnKind", "unicodeCodePoints"},
             {"results", std::move(results)}};
    out << dumped({{"$schema",
                    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/"
                    "sarif-schema-2.1.0.json"},
                   {"version", "2.1.0"},
                   {"runs", Json::array({std::move(run)})}})
        << '\n';
}

}  // namespace lint
