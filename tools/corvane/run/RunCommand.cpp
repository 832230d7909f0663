#include "Commands.h"
#include "run/PlannedRun.h"
#include "run/Worker.h"

namespace {

class RunCommand : public Command {
public:
    explicit RunCommand(CLI::App& program)
        : Command(
              program, "run", "Run the rules of rule files and write the results",
              "Exit status: 0 all rules passed or are waived, 1 a rule failed, 2 bad usage or a\n"
              "file that cannot be read or written, 3 no rule failed but one could not judge.") {
        addWords(parser(), "RULEFILE", options_.ruleFiles,
                 trUtf8("Rule files; folders, patterns and @LIST too, as for parts"))
            .required();
        options_.declare(parser());
    }

    bool isBatch() const override { return options_.batch; }

    int run(Console& console) override {
        options_.apply();
        return runRules(options_, console);
    }

private:
    RunOptions options_;
};

/// What a run starts for itself.
class WorkerCommand : public Command {
public:
    explicit WorkerCommand(CLI::App& program) : Command(program, "worker") {}

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
