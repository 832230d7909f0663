#include "ResultJson.h"

#include <istream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace results {

namespace {

constexpr const char* kVerdicts[] = {"passed", "failed", "error", "notRun", "waived"};
constexpr const char* kPlaceKinds[] = {"point", "box", "polyline", "facets", "faces"};
constexpr const char* kWaiverKinds[] = {"file", "baseline"};

template <typename Enum, std::size_t size>
Enum enumFrom(const Json& json, const char* const (&names)[size]) {
    const auto& text = json.get_ref<const std::string&>();
    for (std::size_t i = 0; i < size; ++i)
        if (text == names[i]) return static_cast<Enum>(i);
    throw nlohmann::json::other_error::create(501, "unknown word \"" + text + "\"", &json);
}

// Members that say nothing are left out.

void put(Json& object, const char* name, const std::string& text) {
    if (!text.empty()) object[name] = text;
}
void put(Json& object, const char* name, const std::optional<double>& number) {
    if (number) object[name] = *number;
}
template <typename T, typename ToJson>
void put(Json& object, const char* name, const std::vector<T>& values, ToJson toJsonOf) {
    if (values.empty()) return;
    Json list = Json::array();
    for (const T& value : values)
        list.push_back(toJsonOf(value));
    object[name] = std::move(list);
}

const Json* find(const Json& object, const char* name) {
    const auto member = object.find(name);
    return member == object.end() ? nullptr : &*member;
}
/// A number with a fraction or beyond the range of T is none.
template <typename T>
void takeWhole(const Json& json, T& target) {
    if (!json.is_number_integer() || (std::is_unsigned_v<T> && !json.is_number_unsigned()))
        throw nlohmann::json::type_error::create(302, "a whole number was expected", &json);
    target = json.get<T>();
}
void takeValue(const Json& json, std::int64_t& target) {
    takeWhole(json, target);
}
void takeValue(const Json& json, std::uint64_t& target) {
    takeWhole(json, target);
}
template <typename T>
void takeValue(const Json& json, T& target) {
    json.get_to(target);
}
template <typename T>
void take(const Json& object, const char* name, T& target) {
    if (const Json* member = find(object, name)) takeValue(*member, target);
}
/// A member that must be there.
template <typename T>
void need(const Json& object, const char* name, T& target) {
    takeValue(object.at(name), target);
}
void take(const Json& object, const char* name, std::optional<double>& target) {
    if (const Json* member = find(object, name)) target = member->get<double>();
}
template <typename T, typename FromJson>
void take(const Json& object, const char* name, std::vector<T>& target, FromJson from) {
    const Json* list = find(object, name);
    if (!list) return;
    for (const Json& value : *list)
        target.push_back(from(value));
}

std::int64_t wholeFrom(const Json& json) {
    std::int64_t number = 0;
    takeValue(json, number);
    return number;
}

const auto kSame = [](const auto& value) { return Json(value); };

Json textOf(const Remark& remark) {
    return remark.text;
}

Json placeJson(const Place& place) {
    Json json{{"kind", kPlaceKinds[static_cast<int>(place.kind)]}};
    put(json, "label", place.label);
    put(json, "points", place.points, kSame);
    put(json, "faces", place.faces, kSame);
    return json;
}

Place placeFrom(const Json& json) {
    Place place;
    place.kind = enumFrom<Place::Kind>(json.at("kind"), kPlaceKinds);
    take(json, "label", place.label);
    take(json, "points", place.points,
         [](const Json& point) { return point.get<std::array<double, 3>>(); });
    take(json, "faces", place.faces, wholeFrom);
    return place;
}

Json waiverJson(const Waiver& waiver) {
    Json json{{"kind", kWaiverKinds[static_cast<int>(waiver.kind)]}};
    put(json, "reason", waiver.reason);
    put(json, "author", waiver.author);
    put(json, "expires", waiver.expires);
    put(json, "place", waiver.place);
    return json;
}

Waiver waiverFrom(const Json& json) {
    Waiver waiver;
    waiver.kind = enumFrom<Waiver::Kind>(json.at("kind"), kWaiverKinds);
    take(json, "reason", waiver.reason);
    take(json, "author", waiver.author);
    take(json, "expires", waiver.expires);
    take(json, "place", waiver.place);
    return waiver;
}

Json findingJson(const Finding& finding) {
    Json json{{"message", finding.message}};
    if (finding.isNote) json["note"] = true;
    put(json, "measured", finding.measured);
    put(json, "limit", finding.limit);
    put(json, "unit", finding.unit);
    put(json, "places", finding.places, placeJson);
    put(json, "fingerprint", finding.fingerprint);
    if (finding.waiver) json["waiver"] = waiverJson(*finding.waiver);
    return json;
}

Finding findingFrom(const Json& json) {
    Finding finding;
    need(json, "message", finding.message);
    take(json, "note", finding.isNote);
    take(json, "measured", finding.measured);
    take(json, "limit", finding.limit);
    take(json, "unit", finding.unit);
    take(json, "places", finding.places, placeFrom);
    take(json, "fingerprint", finding.fingerprint);
    if (const Json* waiver = find(json, "waiver")) finding.waiver = waiverFrom(*waiver);
    return finding;
}

Json valueJson(const Parameter::Value& value) {
    return std::visit(kSame, value);
}

Parameter::Value valueFrom(const Json& json) {
    if (json.is_boolean()) return json.get<bool>();
    if (json.is_number_integer()) return wholeFrom(json);
    if (json.is_number()) return json.get<double>();
    return json.get<std::string>();
}

Json parameterJson(const Parameter& parameter) {
    Json json{{"number", parameter.number}};
    put(json, "name", parameter.name);
    if (!parameter.on) json["on"] = false;
    json["values"] = Json::array();
    put(json, "values", parameter.values, valueJson);
    return json;
}

Parameter parameterFrom(const Json& json) {
    Parameter parameter;
    need(json, "number", parameter.number);
    take(json, "name", parameter.name);
    take(json, "on", parameter.on);
    take(json, "values", parameter.values, valueFrom);
    return parameter;
}

Json componentJson(const Component& component) {
    Json json{{"name", component.name}};
    put(json, "sha256", component.sha256);
    return json;
}

Component componentFrom(const Json& json) {
    Component component;
    need(json, "name", component.name);
    take(json, "sha256", component.sha256);
    return component;
}

Json severityJson(const Severity& severity) {
    Json json{{"number", severity.number}};
    put(json, "name", severity.name);
    return json;
}

Severity severityFrom(const Json& json) {
    Severity severity;
    need(json, "number", severity.number);
    take(json, "name", severity.name);
    return severity;
}

std::string textFrom(const Json& json) {
    return json.get<std::string>();
}

Json countsJson(const Counts& counts) {
    return {{kVerdicts[0], counts.passed},
            {kVerdicts[1], counts.failed},
            {kVerdicts[2], counts.error},
            {kVerdicts[3], counts.notRun},
            {kVerdicts[4], counts.waived}};
}

Counts countsFrom(const Json& json) {
    Counts counts;
    for (const auto verdict :
         {Verdict::Passed, Verdict::Failed, Verdict::Error, Verdict::NotRun, Verdict::Waived})
        takeValue(json.at(std::string(nameOf(verdict))), counts.of(verdict));
    return counts;
}

}  // namespace

Json toJson(const RuleResult& rule) {
    Json json{{"ruleFile", rule.ruleFile}};
    if (rule.line > 0) json["line"] = rule.line;
    json["name"] = rule.name;
    put(json, "category", rule.category);
    json["severity"] = severityJson(rule.severity);
    put(json, "description", rule.description);
    put(json, "source", rule.source);
    put(json, "why", rule.why);
    put(json, "how", rule.how);
    json["verdict"] = nameOf(rule.verdict);
    put(json, "findings", rule.findings, findingJson);
    put(json, "reasons", rule.reasons, textOf);
    put(json, "parameters", rule.parameters, parameterJson);
    put(json, "components", rule.components, componentJson);
    json["seconds"] = rule.seconds;
    return json;
}

RuleResult ruleFrom(const Json& json) {
    RuleResult rule;
    need(json, "ruleFile", rule.ruleFile);
    take(json, "line", rule.line);
    need(json, "name", rule.name);
    take(json, "category", rule.category);
    rule.severity = severityFrom(json.at("severity"));
    take(json, "description", rule.description);
    take(json, "source", rule.source);
    take(json, "why", rule.why);
    take(json, "how", rule.how);
    rule.verdict = enumFrom<Verdict>(json.at("verdict"), kVerdicts);
    take(json, "findings", rule.findings, findingFrom);
    take(json, "reasons", rule.reasons, textFrom);
    take(json, "parameters", rule.parameters, parameterFrom);
    take(json, "components", rule.components, componentFrom);
    need(json, "seconds", rule.seconds);
    return rule;
}

Json toJson(const PartResult& part) {
    Json json{{"number", part.number}};
    put(json, "path", part.path);
    if (!part.sha256.empty()) {
        json["sha256"] = part.sha256;
        json["size"] = part.size;
    }
    put(json, "units", part.units);
    json["rules"] = Json::array();
    put(json, "rules", part.rules, [](const RuleResult& rule) { return toJson(rule); });
    return json;
}

PartResult partFrom(const Json& json) {
    PartResult part;
    need(json, "number", part.number);
    take(json, "path", part.path);
    take(json, "sha256", part.sha256);
    take(json, "size", part.size);
    take(json, "units", part.units);
    take(json, "rules", part.rules, ruleFrom);
    return part;
}

Json toJson(const RunInfo& info) {
    Json json{{"tool", {{"name", info.tool}, {"version", info.toolVersion}}},
              {"started", info.started},
              {"parts", info.parts}};
    if (info.shards > 0) json["shard"] = {{"number", info.shard}, {"of", info.shards}};
    json["ruleFiles"] = Json::array();
    put(json, "ruleFiles", info.ruleFiles, componentJson);
    put(json, "severities", info.severities, severityJson);
    return json;
}

RunInfo runInfoFrom(const Json& json) {
    RunInfo info;
    need(json.at("tool"), "name", info.tool);
    need(json.at("tool"), "version", info.toolVersion);
    need(json, "started", info.started);
    need(json, "parts", info.parts);
    if (const Json* shard = find(json, "shard")) {
        need(*shard, "number", info.shard);
        need(*shard, "of", info.shards);
    }
    take(json, "ruleFiles", info.ruleFiles, componentFrom);
    take(json, "severities", info.severities, severityFrom);
    return info;
}

Json toJson(const RunEnd& end) {
    Json json{{"summary", countsJson(end.counts)}, {"interrupted", end.interrupted}};
    put(json, "notices", end.notices, textOf);
    put(json, "database", end.database);
    json["seconds"] = end.seconds;
    return json;
}

RunEnd runEndFrom(const Json& json) {
    RunEnd end;
    end.counts = countsFrom(json.at("summary"));
    need(json, "interrupted", end.interrupted);
    take(json, "notices", end.notices, textFrom);
    take(json, "database", end.database);
    need(json, "seconds", end.seconds);
    return end;
}

std::string lineOf(const Json& json) {
    // Bytes that are no UTF-8 become U+FFFD: a text of a rule must not end the run.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string_view nameOf(Verdict verdict) {
    return kVerdicts[static_cast<int>(verdict)];
}

namespace {

class JsonWriter : public ResultWriter {
public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void begin(const RunInfo& info) override {
        out_ << "{\n\"format\": \"" << kFormatName << "\",\n\"version\": " << kFormatVersion
             << ",\n\"run\": " << lineOf(toJson(info)) << ",\n\"parts\": [";
    }
    void add(const PartResult& part) override {
        out_ << (first_ ? "\n" : ",\n") << lineOf(toJson(part));
        first_ = false;
    }
    void end(const RunEnd& end) override {
        out_ << "\n],\n\"end\": " << lineOf(toJson(end)) << "\n}\n";
    }

private:
    std::ostream& out_;
    bool first_ = true;
};

}  // namespace

std::unique_ptr<ResultWriter> makeJsonWriter(std::ostream& out) {
    return std::make_unique<JsonWriter>(out);
}

std::optional<Run> readResults(std::istream& in, std::string& problem) {
    try {
        const Json json = Json::parse(in);
        const Json* format = find(json, "format");
        if (!format || *format != kFormatName) {
            problem = "these are no results of corvane";
            return {};
        }
        if (json.at("version") != kFormatVersion) {
            problem = "the results have version " + lineOf(json.at("version")) +
                      ", and this program reads version " + std::to_string(kFormatVersion);
            return {};
        }
        Run run{runInfoFrom(json.at("run")), {}, runEndFrom(json.at("end"))};
        take(json, "parts", run.parts, partFrom);
        return run;
    } catch (const nlohmann::json::exception& error) {
        // After the name of the exception, in brackets.
        const std::string text = error.what();
        problem = text.substr(text.find("] ") == text.npos ? 0 : text.find("] ") + 2);
        return {};
    }
}

}  // namespace results
