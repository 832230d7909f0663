#include "run/PlannedRun.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include <corvane/part/LengthUnits.h>

#include "Text.h"
#include "language/Messages.h"
#include "lint/LintFile.h"
#include "lint/LintWorker.h"
#include "lint/LintWriter.h"
#include "run/Clock.h"
#include "run/Run.h"

namespace {

/// Runs the plan that the options ask for.
class PlannedRun {
public:
    PlannedRun(const RunOptions& options, Console& console)
        : options_(options), console_(console), outputs_(console) {}

    int execute() {
        const std::optional<Severities> severities =
            findSeverities(options_.severityFile, console_);
        if (!severities || !checkUnits() ||
            !findLimit(*severities, options_.failOn, failOn_, console_) ||
            !checkSelection(*severities) || !loadJudgement())
            return kUnusable;
        const std::optional<Plan> plan = makePlan(options_, *severities, console_);
        if (!plan) return kUnusable;
        if (options_.isStrict && !areClean(*plan, *severities)) return kUnusable;
        if (plan->rules.empty() || (plan->parts.empty() && plan->shards == 0)) return kUnusable;
        if (!outputs_.open(options_.format, options_.outputs, inputsOf(*plan))) return kUnusable;
        Gate gate(*severities, failOn_);
        Run(*plan, options_, std::move(judgement_), gate, outputs_, console_).execute(*severities);
        if (!outputs_.commit() || plan->hasUnreadable) return kUnusable;
        return gate.status();
    }

private:
    /// The files that no result may replace. The baseline is none: new results often take its
    /// place.
    [[nodiscard]] std::vector<std::string> inputsOf(const Plan& plan) const {
        std::vector<std::string> inputs{options_.severityFile, options_.waiverFile};
        for (const results::Component& file : plan.ruleFiles)
            inputs.push_back(file.name);
        for (const PlannedPart& part : plan.parts)
            inputs.push_back(part.path);
        return inputs;
    }

    [[nodiscard]] bool checkUnits() const {
        using corvane::part::kLengthUnits;
        const std::string units = options_.units.ToUtf8();
        if (units.empty() || corvane::part::millimetresIn(units) > 0.0) return true;
        std::string known;
        for (const corvane::part::LengthUnit& unit : kLengthUnits)
            known.append(known.empty() ? "" : ", ").append(unit.name);
        console_.report(
            tr("{0}: {1} is no unit of length; there are {2}", "--units", units, known));
        return false;
    }

    bool checkSelection(const Severities& severities) {
        for (const std::string& severity : options_.severities) {
            if (severities.find(severity)) continue;
            console_.report(tr("{0}: there is no severity {1}", "--severity", severity));
            return false;
        }
        return true;
    }

    bool loadJudgement() {
        std::string problem;
        if (!options_.waiverFile.empty()) {
            judgement_.waivers = Waivers::load(options_.waiverFile, dateToday(), problem);
            if (!judgement_.waivers) console_.report(wide(problem));
        }
        if (problem.empty() && !options_.baselineFile.empty()) {
            judgement_.baseline = Baseline::load(options_.baselineFile, problem);
            if (!judgement_.baseline) console_.report(wide(problem));
        }
        return problem.empty();
    }

    /// Says what the rule files say in vain.
    bool areClean(const Plan& plan, const Severities& severities) {
        std::vector<std::string> folders;
        for (const CStringW& folder : options_.folders.modules)
            folders.push_back(folder.ToUtf8());
        lint::LintProcess linter(std::move(folders), lint::wordsOf(severities));
        std::vector<lint::Problem> problems = lint::Linter::checkSettings();
        for (const results::Component& file : plan.ruleFiles)
            std::ranges::move(linter.checkFile(file.name), std::back_inserter(problems));
        std::ostringstream text;
        lint::writeText(text, problems);
        std::istringstream lines(text.str());
        for (std::string line; std::getline(lines, line);)
            console_.report(wide(line));
        return problems.empty();
    }

    const RunOptions& options_;
    Console& console_;
    results::Outputs outputs_;
    std::optional<std::int64_t> failOn_;
    Run::Judgement judgement_;
};

}  // namespace

int runRules(const RunOptions& options, Console& console) {
    return PlannedRun(options, console).execute();
}
