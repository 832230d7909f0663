#include "run/Waivers.h"

#include <algorithm>
#include <fstream>

#include "Pattern.h"
#include "language/Messages.h"
#include "results/ResultJson.h"
#include "run/TomlTables.h"

namespace {

using results::Finding;
using results::PartResult;
using results::RuleResult;
using results::Verdict;

std::string nameIn(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

/// A pattern with a folder in it means the path as the run names it, one without the file's name.
bool fitsPart(const std::string& pattern, const std::string& path) {
    return fitsPath(pattern, pattern.find('/') == std::string::npos ? nameIn(path) : path);
}

bool isDate(const std::string& text) {
    constexpr std::string_view kForm = "dddd-dd-dd";
    return std::ranges::equal(text, kForm, [](char unit, char form) {
        return form == 'd' ? unit >= '0' && unit <= '9' : unit == form;
    });
}

/// A rule whose every failing finding is waived is waived.
void settle(RuleResult& rule) {
    if (rule.verdict != Verdict::Failed) return;
    bool any = false;
    for (const Finding& finding : rule.findings) {
        if (finding.isNote) continue;
        if (!finding.waiver) return;
        any = true;
    }
    if (any) rule.verdict = Verdict::Waived;
}

/// The findings that can be waived, with their rules; settles each rule afterwards.
template <typename Waive>
void eachFinding(PartResult& part, Waive waive) {
    for (RuleResult& rule : part.rules) {
        if (rule.verdict != Verdict::Failed) continue;
        for (Finding& finding : rule.findings)
            if (!finding.isNote && !finding.waiver) waive(rule, finding);
        settle(rule);
    }
}

}  // namespace

std::optional<Waivers> Waivers::load(const std::string& path, const std::string& today,
                                     std::string& problem) {
    const auto tables = loadTables(
        path, "waiver", {"rule", "part", "fingerprint", "reason", "author", "expires"}, problem);
    if (!tables) return {};
    Waivers waivers;
    for (const TomlTable& table : *tables) {
        for (const char* key : {"rule", "part", "reason", "author", "expires"}) {
            if (table.text(key).find_first_not_of(" \t\n") != std::string::npos) continue;
            problem = trUtf8("{0}: the waiver has no \"{1}\"", table.place(), key);
            return {};
        }
        const std::string expires = table.text("expires");
        if (!isDate(expires)) {
            problem =
                trUtf8("{0}: \"{1}\" is no date such as 2027-01-31", table.place(), "expires");
            return {};
        }
        waivers.entries_.push_back({table.text("rule"),
                                    table.text("part"),
                                    table.text("fingerprint"),
                                    {results::Waiver::Kind::File, table.text("reason"),
                                     table.text("author"), expires, table.place()},
                                    expires < today});
    }
    return waivers;
}

Waivers::Entry* Waivers::find(const PartResult& part, const RuleResult& rule,
                              const Finding& finding) {
    const auto fits = [&](const Entry& entry) {
        return !entry.isExpired && fitsName(entry.rule, rule.name) &&
               fitsPart(entry.part, part.path) &&
               (entry.fingerprint.empty() || entry.fingerprint == finding.fingerprint);
    };
    const auto entry = std::ranges::find_if(entries_, fits);
    return entry == entries_.end() ? nullptr : &*entry;
}

void Waivers::apply(PartResult& part) {
    eachFinding(part, [&](const RuleResult& rule, Finding& finding) {
        Entry* entry = find(part, rule, finding);
        if (!entry) return;
        entry->isUsed = true;
        finding.waiver = entry->waiver;
    });
}

std::vector<results::Remark> Waivers::notices(bool onlyExpired) const {
    std::vector<results::Remark> notices;
    for (const Entry& entry : entries_) {
        const std::string& place = entry.waiver.place;
        if (entry.isExpired)
            notices.push_back(remark("{0}: the waiver of \"{1}\" for {2} expired on {3}", place,
                                     entry.rule, entry.part, entry.waiver.expires));
        else if (!entry.isUsed && !onlyExpired)
            notices.push_back(remark("{0}: the waiver of \"{1}\" for {2} matches no finding", place,
                                     entry.rule, entry.part));
    }
    return notices;
}

std::optional<Baseline> Baseline::load(const std::string& path, std::string& problem) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        problem = trUtf8("{0}: cannot be read", path);
        return {};
    }
    const std::optional<results::Run> run = results::readResults(file, problem);
    if (!run) {
        problem = path + ": " + problem;
        return {};
    }
    Baseline baseline;
    baseline.place_ = path;
    for (const PartResult& part : run->parts) {
        if (!baseline.byPath_.contains(part.path))
            baseline.pathsByName_[nameIn(part.path)].push_back(part.path);
        Known& known = baseline.byPath_[part.path];
        for (const RuleResult& rule : part.rules)
            for (const Finding& finding : rule.findings)
                if (!finding.isNote) ++known[{rule.name, finding.fingerprint}];
    }
    return baseline;
}

const Baseline::Known* Baseline::find(const std::string& path) const {
    const auto known = byPath_.find(path);
    if (known != byPath_.end()) return &known->second;
    const auto paths = pathsByName_.find(nameIn(path));
    if (paths == pathsByName_.end() || paths->second.size() != 1) return nullptr;
    return &byPath_.at(paths->second.front());
}

void Baseline::apply(PartResult& part) const {
    const Known* known = find(part.path);
    if (!known) return;
    Known left = *known;
    eachFinding(part, [&](const RuleResult& rule, Finding& finding) {
        const auto entry = left.find({rule.name, finding.fingerprint});
        if (entry == left.end() || entry->second == 0) return;
        --entry->second;
        finding.waiver = results::Waiver{results::Waiver::Kind::Baseline, {}, {}, {}, place_};
    });
}
