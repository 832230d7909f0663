#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <sstream>

#include <corvane/platform/Environment.h>

#include "Commands.h"
#include "lint/LintFile.h"
#include "lint/LintWorker.h"
#include "lint/LintWriter.h"
#include "run/Clock.h"
#include "run/Run.h"
#include "run/Worker.h"

namespace {

CStringW wide(const std::string& text) {
    return CStringW::FromUtf8(text);
}

/// Runs the plan that the options ask for.
class PlannedRun {
public:
    PlannedRun(const RunOptions& options, Console& console)
        : options_(options), console_(console), outputs_(console) {}

    int execute() {
        const std::optional<Severities> severities =
            findSeverities(options_.severityFile, console_);
        if (!severities || !findLimit(*severities) || !checkSelection(*severities) ||
            !loadJudgement())
            return kUnusable;
        const std::optional<Plan> plan = makePlan(options_, *severities, console_);
        if (!plan) return kUnusable;
        if (options_.isStrict && !areClean(*plan, *severities)) return kUnusable;
        if (plan->rules.empty() || (plan->parts.empty() && plan->shards == 0)) return kUnusable;
        if (!outputs_.open(options_.format, options_.outputs)) return kUnusable;
        Gate gate(*severities, failOn_);
        Run(*plan, options_, std::move(judgement_), gate, outputs_, console_).execute(*severities);
        if (!outputs_.commit() || plan->hasUnreadable) return kUnusable;
        return gate.status();
    }

private:
    bool findLimit(const Severities& severities) {
        if (options_.failOn.empty()) return true;
        failOn_ = severities.find(options_.failOn);
        if (failOn_ && !severities.nameOf(*failOn_).empty()) return true;
        console_.report(u"--fail-on: there is no severity " + wide(options_.failOn));
        return false;
    }

    bool checkSelection(const Severities& severities) {
        for (const std::string& severity : options_.severities) {
            if (severities.find(severity)) continue;
            console_.report(u"--severity: there is no severity " + wide(severity));
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

class RunCommand : public Command {
public:
    explicit RunCommand(CLI::App& program)
        : Command(
              program, "run", "Run the rules of rule files and write the results",
              "Exit status: 0 all rules passed or are waived, 1 a rule failed, 2 bad usage or a\n"
              "file that cannot be read or written, 3 no rule failed but one could not judge.") {
        CLI::App& app = parser();
        app.add_option("RULEFILE", options_.ruleFiles,
                       "Rule files; folders, patterns and @LIST too, as for parts")
            ->required();
        declareParts(app);
        declareSelection(app);
        declareJudgement(app);
        declareRunning(app);
        options_.folders.declare(app);
    }

    bool isBatch() const override { return options_.batch; }

    int run(Console& console) override {
        if (options_.parts.empty()) {
            const CStringW part(corvane::GetEnvironmentText(u"CORVANE_PART"));
            if (!part.IsEmpty()) options_.parts.push_back(part.ToUtf8());
        }
        options_.parts.insert(options_.parts.end(), moreParts_.begin(), moreParts_.end());
        options_.folders.apply();
        return PlannedRun(options_, console).execute();
    }

private:
    void declareParts(CLI::App& app) {
        app.add_option("--part", options_.parts,
                       "A part to check, else CORVANE_PART: a file, a folder, a pattern such as "
                       "'parts/*.stl' or @LIST; may be repeated")
            ->type_name("FILE")
            ->allow_extra_args(false);
        app.add_option("--parts", moreParts_, "The same for all arguments up to the next option")
            ->type_name("FILE...");
        addText(app, "--material", options_.material, "What the parts are made of")
            ->type_name("NAME");
        addText(app, "--units", options_.units, "Unit of parts whose files name none, else mm")
            ->type_name("UNIT");
        app.add_option("--shard", options_.shard, "Check only the I-th of N shares of the parts")
            ->type_name("I/N");
    }

    void declareSelection(CLI::App& app) {
        const auto add = [&app](const char* name, std::vector<std::string>& target,
                                const char* description, const char* type) {
            app.add_option(name, target, description)->type_name(type)->allow_extra_args(false);
        };
        add("--rule", options_.rules, "Only rules of that name; may be a pattern and repeated",
            "NAME");
        add("--category", options_.categories, "Only rules of that category", "NAME");
        add("--severity", options_.severities, "Only rules of that severity", "SEVERITY");
    }

    void declareJudgement(CLI::App& app) {
        app.add_option("--fail-on", options_.failOn,
                       "Let only rules of that severity or a graver one decide the exit status")
            ->type_name("SEVERITY");
        app.add_option("--severities", options_.severityFile,
                       "Names of severities, else Settings/Severities.toml of the data folder")
            ->type_name("FILE");
        app.add_option("--waivers", options_.waiverFile, "Findings that are accepted")
            ->type_name("FILE");
        app.add_option("--baseline", options_.baselineFile,
                       "Results of a former run in JSON: only what is not in them fails")
            ->type_name("FILE");
    }

    void declareRunning(CLI::App& app) {
        app.add_flag("--strict", options_.isStrict,
                     "Run nothing when lint finds something in the rule files");
        app.add_option("--format", options_.format,
                       "Format of standard output: " + results::formatNames())
            ->type_name("FORMAT");
        app.add_option("--output", options_.outputs, "Write a file too; may be repeated")
            ->type_name("FORMAT=FILE")
            ->allow_extra_args(false);
        app.add_option("-j,--jobs", options_.workers, "Worker processes, else one a core")
            ->type_name("N");
        app.add_option("--timeout", options_.timeout, "Seconds that a rule may take, else 300")
            ->type_name("SECONDS")
            ->check(CLI::Range(0.001, 1e9));
        app.add_option("--memory", options_.memory,
                       "MB that a worker may take, else its share of four fifths of the machine's")
            ->type_name("MB");
        app.add_option("--cache", options_.cacheFolder,
                       "Folder of results: what is unchanged is not run again")
            ->type_name("DIR");
        app.add_flag("--batch", options_.batch,
                     "Run without a user: no message boxes, no progress");
    }

    RunOptions options_;
    std::vector<std::string> moreParts_;
};

/// What a run starts for itself.
class WorkerCommand : public Command {
public:
    explicit WorkerCommand(CLI::App& program)
        : Command(program, "worker", "Run the jobs of a controller", "") {
        parser().group("");  // not in the help: nobody types it
    }

    bool isBatch() const override { return true; }
    int run(Console&) override { return runWorker(); }
};

}  // namespace

std::unique_ptr<Command> makeRunCommand(CLI::App& program) {
    return std::make_unique<RunCommand>(program);
}

std::unique_ptr<Command> makeWorkerCommand(CLI::App& program) {
    return std::make_unique<WorkerCommand>(program);
}
