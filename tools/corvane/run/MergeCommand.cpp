#include <fstream>

#include "Commands.h"
#include "Text.h"
#include "results/Outputs.h"
#include "results/ResultJson.h"
#include "run/FileList.h"
#include "run/Gate.h"
#include "run/Merge.h"
#include "run/RunOptions.h"

namespace {

class MergeCommand : public Command {
public:
    explicit MergeCommand(CLI::App& program)
        : Command(
              program, "merge", "Join files of results, such as the shares of one run",
              "Exit status: as of \"corvane run\" with the same results; 2 also when something\n"
              "is missing or double.") {
        CLI::App& app = parser();
        addWords(app, "RESULTS", files_,
                 trUtf8("Files of results in JSON; folders, patterns, @LIST"))
            .required();
        declareOutputs(app, format_, outputs_);
        declareFailOn(app, failOn_);
    }

    int run(Console& console) override {
        std::vector<NamedRun> runs;
        if (!load(runs, console)) return kUnusable;
        std::vector<std::string> inputs;
        inputs.reserve(runs.size());
        for (const NamedRun& one : runs)
            inputs.push_back(one.path);
        const MergedRun merged = merge(std::move(runs));
        for (const std::string& problem : merged.problems)
            console.report(wide(problem));
        const Severities severities(merged.run.info.severities);
        std::optional<std::int64_t> failOn;
        if (!findLimit(severities, failOn_, failOn, console)) return kUnusable;
        Gate gate(severities, failOn);
        if (!write(merged.run, inputs, gate, console) || !merged.problems.empty()) return kUnusable;
        return gate.status();
    }

private:
    bool load(std::vector<NamedRun>& runs, Console& console) const {
        constexpr std::string_view kEndings[] = {".json"};
        FileList list = expandFiles(files_, kEndings);
        for (const std::string& path : list.files) {
            std::ifstream file(path, std::ios::binary);
            std::string problem = trUtf8("cannot be read");
            std::optional<results::Run> run;
            if (file) run = results::readResults(file, problem);
            if (run)
                runs.push_back({path, std::move(*run)});
            else
                list.problems.push_back(std::string(path).append(": ").append(problem));
        }
        for (const std::string& problem : list.problems)
            console.report(wide(problem));
        for (const std::string& note : list.notes)
            console.report(wide(note));
        return list.problems.empty() && !runs.empty();
    }

    bool write(const results::Run& run, const std::vector<std::string>& inputs, Gate& gate,
               Console& console) const {
        results::Outputs outputs(console);
        if (!outputs.open(format_, outputs_, inputs)) return false;
        outputs.begin(run.info);
        for (const results::PartResult& part : run.parts) {
            gate.add(part);
            outputs.add(part);
        }
        if (run.end.interrupted) gate.addInterruption();
        outputs.end(run.end);
        return outputs.commit();
    }

    std::vector<std::string> files_;
    std::vector<std::string> outputs_;
    std::string format_ = "text";
    std::string failOn_;
};

}  // namespace

std::unique_ptr<Command> makeMergeCommand(CLI::App& program) {
    return std::make_unique<MergeCommand>(program);
}
