#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

#include <corvane/app/BatchMode.h>
#include <corvane/app/StringResources.h>
#include <corvane/platform/Environment.h>

#include "CheckRule.h"
#include "Commands.h"
#include "Table.h"

namespace {

struct RunOptions {
    std::vector<CStringW> ruleFiles;
    CStringW part;
    bool batch = false;
    FolderOptions folders;
};

struct Count {
    int passed = 0;
    int failed = 0;
    int notRun = 0;

    int all() const { return passed + failed + notRun; }
};

struct VerdictForm {
    const char16_t* text;
    Tone tone;
    int Count::*counter;
};

VerdictForm formOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::Passed:
            return {u"passed", Tone::Good, &Count::passed};
        case Verdict::NotRun:
            return {u"not run", Tone::Doubtful, &Count::notRun};
        case Verdict::Failed:
            break;
    }
    return {u"failed", Tone::Bad, &Count::failed};
}

/// Runs rule files one after the other, and counts.
class RuleRun {
public:
    RuleRun(const RunOptions& options, Console& console)
        : options_(options), console_(console), modules_(options.folders.modules) {}

    const Count& count() const { return count_; }

    void runFile(const RuleFile& file) {
        Table table({u"Rule", u"Category", u"Severity", u"Result", u"Reason"});
        for (QorLong i = 0; i < file.size(); ++i) {
            const CStringW name = attributeText(file.element(i), corvane::resource::kRuleNameAttr);
            CStringW step;
            step.Format(u"%d of %d: %s, %s", i + 1, file.size(), name, file.path());
            console_.progress(step);
            table.add(rowOf(file, i));
        }
        if (options_.ruleFiles.size() > 1) console_.writeLine(file.path(), Tone::Heading);
        table.print(console_);
        console_.endLine();
    }

    void writeSum() const {
        CStringW text;
        text.Format(u"%d %s: %d passed", count_.all(), count_.all() == 1 ? u"rule" : u"rules",
                    count_.passed);
        if (count_.failed > 0) text.AppendFormat(u", %d failed", count_.failed);
        if (count_.notRun > 0) text.AppendFormat(u", %d not run", count_.notRun);
        console_.writeLine(text);
    }

private:
    Table::Row rowOf(const RuleFile& file, QorLong index) {
        const MessageScope messages(console_, file.place(index));
        const LoadedRule loaded = loadRule(file.element(index), modules_);
        Outcome outcome = checkRule(loaded, options_.part);
        const VerdictForm form = formOf(outcome.verdict);
        ++(count_.*form.counter);
        CStringW severity;
        severity.Format(u"%d", loaded.rule->m_lRuleSeverity);
        return {{loaded.rule->m_csRuleName, loaded.rule->m_csRuleCategory, severity, form.text},
                std::move(outcome.reasons),
                form.tone};
    }

    const RunOptions& options_;
    Console& console_;
    RuleModules modules_;
    Count count_;
};

/// Makes the part's path full, so that rules and engines mean the same file. False when there is no
/// such file.
bool findPart(CStringW& part) {
    if (part.IsEmpty()) return true;
    std::error_code status;
    const std::filesystem::path path(part.Std());
    if (!std::filesystem::is_regular_file(path, status)) return false;
    part = std::filesystem::absolute(path).u16string();
    return true;
}

int runRules(const RunOptions& options, Console& console) {
    SetBatchModeStatus(options.batch);
    RuleRun run(options, console);
    bool unreadable = false;
    for (const CStringW& path : options.ruleFiles) {
        const std::unique_ptr<RuleFile> file = RuleFile::load(path, console);
        if (file)
            run.runFile(*file);
        else
            unreadable = true;
    }
    if (run.count().all() > 0) run.writeSum();
    if (unreadable) return kUnusable;
    return run.count().passed == run.count().all() ? kGood : kWrong;
}

class RunCommand : public Command {
public:
    explicit RunCommand(CLI::App& program)
        : Command(program, "run", "Run the rules of rule files and print the results",
                  "Exit status: 0 all rules passed, 1 a rule failed, was not run or could not be\n"
                  "made, 2 bad usage or a file that cannot be read.") {
        addTexts(parser(), "RULEFILE", options_.ruleFiles, "Rule files")->required();
        addText(parser(), "--part", options_.part, "The part to check")
            ->type_name("FILE")
            ->envname("CORVANE_PART");
        parser().add_flag("--batch", options_.batch,
                          "Run without a user: no message boxes, no progress");
        options_.folders.declare(parser());
    }

    bool isBatch() const override { return options_.batch; }

    int run(Console& console) override {
        if (!findPart(options_.part)) {
            console.report(options_.part + u": no such part");
            return kUnusable;
        }
        options_.folders.apply();
        // Engines take the part from there.
        if (!options_.part.IsEmpty()) corvane::SetEnvironmentText(u"CORVANE_PART", options_.part);
        return runRules(options_, console);
    }

private:
    RunOptions options_;
};

}  // namespace

std::unique_ptr<Command> makeRunCommand(CLI::App& program) {
    return std::make_unique<RunCommand>(program);
}
