#include "results/SarifWriter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>

#include "results/ResultJson.h"

namespace results {

std::string uriOf(const std::string& path) {
    constexpr std::string_view kPlain = "-._~/";
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char unit : path) {
        const auto byte = static_cast<unsigned char>(unit);
        const bool isAlphanumeric = byte < 0x80 && std::isalnum(byte) != 0;
        if (isAlphanumeric || kPlain.find(unit) != kPlain.npos)
            uri += unit;
        else
            (uri += '%', uri += kDigits[byte >> 4], uri += kDigits[byte & 15]);
    }
    return uri;
}

namespace {

constexpr const char* kSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";
constexpr const char* kFingerprint = "corvaneFinding/v1";

/// A message in which nothing is taken for a placeholder or a link.
Json messageOf(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{' || text[i] == '}') plain += text[i];
        if (text.compare(i, 2, "](") == 0) plain += '\\';
        plain += text[i];
    }
    return {{"text", plain.empty() ? "no message" : plain}};
}

/// The upper half of the named severities are errors, the last one of three or more is a note. One
/// without a name is an error: it counts as the gravest.
std::string levelOf(const std::vector<Severity>& severities, std::int64_t number) {
    const auto place = std::ranges::find(severities, number, &Severity::number);
    if (place == severities.end()) return "error";
    const auto at = static_cast<std::size_t>(place - severities.begin());
    if (at < (severities.size() + 1) / 2) return "error";
    return at > 1 && at + 1 == severities.size() ? "note" : "warning";
}

class SarifWriter : public ResultWriter {
public:
    explicit SarifWriter(std::ostream& out) : out_(out) {}

    void begin(const RunInfo& info) override {
        info_ = info;
        out_ << "{\n\"$schema\": \"" << kSchema
             << "\",\n\"version\": \"2.1.0\",\n\"runs\": [{\n\"columnKind\": "
                "\"utf16CodeUnits\",\n\"results\": [";
    }

    void add(const PartResult& part) override {
        const std::size_t artifact = artifacts_.size();
        if (!part.path.empty()) artifacts_.push_back(artifactOf(part));
        for (const RuleResult& rule : part.rules)
            add(part, rule, artifact);
    }

    void end(const RunEnd& end) override {
        Json rules = Json::array();
        for (Json& rule : rules_)
            rules.push_back(std::move(rule));
        const Json tool{{"driver",
                         {{"name", info_.tool},
                          {"version", info_.toolVersion},
                          {"semanticVersion", info_.toolVersion},
                          {"rules", std::move(rules)}}}};
        Json invocation{{"executionSuccessful", end.counts.error == 0 && !end.interrupted},
                        {"startTimeUtc", info_.started}};
        if (!notifications_.empty()) invocation["toolExecutionNotifications"] = notifications_;
        out_ << "\n],\n\"tool\": " << lineOf(tool) << ",\n\"invocations\": [" << lineOf(invocation)
             << "],\n\"artifacts\": " << lineOf(artifacts_) << "\n}]\n}\n";
    }

private:
    static Json artifactOf(const PartResult& part) {
        Json artifact{{"location", {{"uri", uriOf(part.path)}}}};
        if (!part.sha256.empty()) {
            artifact["length"] = part.size;
            artifact["hashes"] = {{"sha-256", part.sha256}};
        }
        return artifact;
    }

    void add(const PartResult& part, const RuleResult& rule, std::size_t artifact) {
        const std::size_t index = indexOf(rule);
        Json locations = Json::array();
        // A place in the part is none in its file: the region is the whole of it.
        if (!part.path.empty())
            locations.push_back(
                {{"physicalLocation",
                  {{"artifactLocation", {{"uri", uriOf(part.path)}, {"index", artifact}}},
                   {"region", {{"byteOffset", 0}, {"byteLength", part.size}}}}}});
        for (const Finding& finding : rule.findings)
            write(rule, finding, index, locations);
        if (rule.verdict == Verdict::Error || rule.verdict == Verdict::NotRun)
            notify(rule, index, locations);
    }

    std::size_t indexOf(const RuleResult& rule) {
        const auto [known, isNew] = indices_.try_emplace(rule.name, rules_.size());
        if (!isNew) return known->second;
        const std::string text = rule.description.empty() ? rule.name : rule.description;
        Json descriptor{
            {"id", rule.name},
            {"shortDescription", messageOf(text)},
            {"fullDescription", messageOf(text)},
            {"help", messageOf(helpOf(rule))},
            {"defaultConfiguration", {{"level", levelOf(info_.severities, rule.severity.number)}}}};
        Json properties;
        if (!rule.category.empty()) properties["tags"] = Json::array({rule.category});
        if (!rule.severity.name.empty()) properties["severity"] = rule.severity.name;
        if (!properties.empty()) descriptor["properties"] = std::move(properties);
        rules_.push_back(std::move(descriptor));
        return known->second;
    }

    static std::string helpOf(const RuleResult& rule) {
        std::string text = rule.description.empty() ? rule.name : rule.description;
        text += ".";
        for (const std::string& more : {rule.why, rule.how})
            if (!more.empty()) text += " " + more;
        if (!rule.source.empty()) text += " Source: " + rule.source + ".";
        for (const Parameter& parameter : rule.parameters) {
            if (parameter.name.empty() || parameter.values.empty()) continue;
            text += " " + parameter.name + ":";
            for (const Parameter::Value& value : parameter.values)
                text += " " + std::visit([](const auto& plain) { return textOf(plain); }, value);
            text += ".";
        }
        return text;
    }
    static std::string textOf(const std::string& text) { return text; }
    template <typename T>
    static std::string textOf(const T& value) {
        return lineOf(Json(value));
    }

    void write(const RuleResult& rule, const Finding& finding, std::size_t index,
               const Json& locations) {
        Json result{{"ruleId", rule.name}, {"ruleIndex", index}};
        result["kind"] = finding.isNote ? "informational" : "fail";
        result["level"] = finding.isNote ? "none" : levelOf(info_.severities, rule.severity.number);
        result["message"] = messageOf(finding.message);
        if (!locations.empty()) result["locations"] = locations;
        if (!finding.fingerprint.empty())
            result["partialFingerprints"] = {{kFingerprint, finding.fingerprint}};
        if (finding.waiver) result["suppressions"] = Json::array({suppressionOf(*finding.waiver)});
        Json properties = propertiesOf(rule, finding);
        if (!properties.empty()) result["properties"] = std::move(properties);
        out_ << (first_ ? "\n" : ",\n") << lineOf(result);
        first_ = false;
    }

    static Json suppressionOf(const Waiver& waiver) {
        std::string why = waiver.reason;
        if (waiver.kind == Waiver::Kind::Baseline) why = "It was there before: " + waiver.place;
        if (!waiver.author.empty()) why += " (" + waiver.author + ")";
        if (!waiver.expires.empty()) why += ", until " + waiver.expires;
        return {{"kind", "external"}, {"status", "accepted"}, {"justification", why}};
    }

    /// What SARIF has no place for: the measures, and where in the part, in our own form.
    static Json propertiesOf(const RuleResult& rule, const Finding& finding) {
        RuleResult one;
        one.findings.push_back(finding);
        const Json own = toJson(one).at("findings").front();
        Json properties;
        for (const char* name : {"measured", "limit", "unit", "places"})
            if (own.contains(name)) properties[name] = own.at(name);
        if (!rule.severity.name.empty()) properties["severity"] = rule.severity.name;
        return properties;
    }

    void notify(const RuleResult& rule, std::size_t index, const Json& locations) {
        std::string text = "The rule \"" + rule.name + "\" could not judge.";
        for (const Remark& reason : rule.reasons)
            text += " " + reason.text;
        Json notification{{"level", rule.verdict == Verdict::Error ? "error" : "warning"},
                          {"message", messageOf(text)},
                          {"associatedRule", {{"id", rule.name}, {"index", index}}}};
        if (!locations.empty()) notification["locations"] = locations;
        notifications_.push_back(std::move(notification));
    }

    std::ostream& out_;
    RunInfo info_;
    bool first_ = true;
    std::map<std::string, std::size_t> indices_;
    std::vector<Json> rules_;
    Json artifacts_ = Json::array();
    Json notifications_ = Json::array();
};

}  // namespace

std::unique_ptr<ResultWriter> makeSarifWriter(std::ostream& out) {
    return std::make_unique<SarifWriter>(out);
}

}  // namespace results
