#include "run/Severities.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include <corvane/config/ModuleConfiguration.h>

#include "Pattern.h"
#include "Text.h"
#include "language/Messages.h"
#include "run/TomlTables.h"

Severities::Severities() : all_{{1, "critical"}, {2, "major"}, {3, "minor"}, {4, "info"}} {}

std::optional<Severities> Severities::load(const std::string& path, std::string& problem) {
    const std::optional<std::vector<TomlTable>> tables =
        loadTables(path, "severity", {"number", "name"}, problem);
    if (!tables) return {};
    Severities severities;
    severities.all_.clear();
    for (const TomlTable& table : *tables) {
        const std::optional<std::int64_t> number = table.whole("number");
        const std::string name = table.text("name");
        if (!number || name.empty()) {
            problem = trUtf8("{0}: a severity needs a number and a name", table.place());
            return {};
        }
        if (!severities.nameOf(*number).empty() || severities.find(name)) {
            problem = trUtf8("{0}: this number or name was there already", table.place());
            return {};
        }
        severities.all_.push_back({*number, name});
    }
    return severities;
}

std::string Severities::nameOf(std::int64_t number) const {
    const std::size_t at = rank(number);
    return at == 0 ? std::string() : all_[at - 1].name;
}

std::optional<std::int64_t> Severities::find(std::string_view text) const {
    for (const results::Severity& severity : all_)
        if (fitsName(severity.name, text)) return severity.number;
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

std::size_t Severities::rank(std::int64_t number) const {
    const auto place = std::ranges::find(all_, number, &results::Severity::number);
    return place == all_.end() ? 0 : static_cast<std::size_t>(place - all_.begin()) + 1;
}

bool Severities::isAtLeast(std::int64_t number, std::int64_t limit) const {
    return rank(number) <= rank(limit);
}

std::optional<Severities> findSeverities(const std::string& file, Console& console) {
    std::string path = file;
    if (path.empty()) {
        const CStringW settings = shownPath(corvane::GetModuleConfiguration().settingsFolder);
        path = (std::filesystem::path(settings.Std()) / "Severities.toml").string();
        std::error_code status;
        if (!std::filesystem::exists(path, status)) return Severities();
    }
    std::string problem;
    std::optional<Severities> severities = Severities::load(path, problem);
    if (!severities) console.report(CStringW::FromUtf8(problem));
    return severities;
}

bool findLimit(const Severities& severities, const std::string& failOn,
               std::optional<std::int64_t>& limit, Console& console) {
    if (failOn.empty()) return true;
    limit = severities.find(failOn);
    if (limit && !severities.nameOf(*limit).empty()) return true;
    console.report(tr("{0}: there is no severity {1}", "--fail-on", failOn));
    return false;
}
