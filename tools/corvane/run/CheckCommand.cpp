#include "Commands.h"
#include "Table.h"
#include "Text.h"
#include "files/RuleFile.h"
#include "files/ShippedRules.h"
#include "run/PlannedRun.h"
#include "run/RuleDatabase.h"

namespace {

/// Runs the rule sets of the installation, which need no settings.
class CheckCommand : public Command {
public:
    explicit CheckCommand(CLI::App& program)
        : Command(
              program, "check", "Check parts by the rules that ship for a process",
              "Exit status: 0 all rules passed or are waived, 1 a rule failed, 2 bad usage or a\n"
              "file that cannot be read or written, 3 no rule failed but one could not judge.") {
        addWords(parser(), "PART", options_.parts,
                 trUtf8("Parts to check: files, folders, patterns and @LIST"));
        addWords(parser(), "--process", processes_,
                 trUtf8("How the part is to be made; may be repeated. See --list"))
            .typeName("PROCESS")
            .oneEach();
        addFlag(parser(), "--list", isList_, trUtf8("List the processes that rules ship for"));
        options_.declare(parser());
    }

    bool isBatch() const override { return options_.batch; }

    int run(Console& console) override {
        if (isList_) return list(console);
        options_.apply();
        if (processes_.empty()) {
            console.report(
                tr("--process says how the part is to be made; \"corvane check --list\" "
                   "lists the processes"));
            return kUnusable;
        }
        for (const std::string& process : processes_) {
            const std::filesystem::path file = shipped::fileOf(process);
            if (file.empty()) return refuse(process, console);
            options_.ruleFiles.push_back(file.string());
        }
        if (options_.parts.empty()) {
            console.report(tr("there is no part to check"));
            return kUnusable;
        }
        // Processes share rules.
        options_.eachOnce = true;
        makeDatabaseFile();
        return runRules(options_, console);
    }

private:
    static int refuse(const std::string& process, Console& console) {
        CStringW known;
        for (const shipped::RuleSet& set : shipped::ruleSets())
            known += (known.IsEmpty() ? CStringW() : CStringW(u", ")) + wide(set.name);
        if (known.IsEmpty())
            console.report(
                tr("{0}: this installation has no rule sets", shipped::folder().u16string()));
        else
            console.report(tr("no rules ship for the process {0}; there are {1}", process, known));
        return kUnusable;
    }

    static int list(Console& console) {
        const std::vector<shipped::RuleSet> sets = shipped::ruleSets();
        if (sets.empty()) return refuse({}, console);
        Table table({tr("Process"), tr("Rules"), tr("For")});
        for (const shipped::RuleSet& set : sets) {
            const std::unique_ptr<RuleFile> file =
                RuleFile::load(CStringW(set.file.u16string()), console);
            if (!file) return kUnusable;
            CStringW count;
            count.Format(u"%d", file->size());
            table.add({{wide(set.name), count}, {file->title()}});
        }
        table.print(console);
        return kGood;
    }

    RunOptions options_;
    std::vector<std::string> processes_;
    bool isList_ = false;
};

}  // namespace

std::unique_ptr<Command> makeCheckCommand(CLI::App& program) {
    return std::make_unique<CheckCommand>(program);
}
