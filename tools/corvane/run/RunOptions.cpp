#include "run/RunOptions.h"

#include <corvane/platform/Environment.h>

#include "results/Outputs.h"

namespace {

void declareParts(CLI::App& app, RunOptions& options) {
    addWords(app, "--part", options.parts,
             trUtf8("A part to check, else CORVANE_PART: a file, a folder, a pattern such as "
                    "'parts/*.stl' or @LIST; may be repeated"))
        .typeName("FILE")
        .oneEach();
    addWords(app, "--parts", options.moreParts,
             trUtf8("The same for all arguments up to the next option"))
        .typeName("FILE...");
    addText(app, "--material", options.material, "What the parts are made of").typeName("NAME");
    addText(app, "--units", options.units, "Unit of parts whose files name none, else mm")
        .typeName("UNIT");
    addWord(app, "--shard", options.shard, trUtf8("Check only the I-th of N shares of the parts"))
        .typeName("I/N");
}

void declareSelection(CLI::App& app, RunOptions& options) {
    const auto add = [&app](const char* name, std::vector<std::string>& target, Message description,
                            const char* type) {
        addWords(app, name, target, trUtf8(description)).typeName(type).oneEach();
    };
    add("--rule", options.rules, "Only rules of that name; may be a pattern and repeated", "NAME");
    add("--category", options.categories, "Only rules of that category", "NAME");
    add("--severity", options.severities, "Only rules of that severity", "SEVERITY");
}

void declareJudgement(CLI::App& app, RunOptions& options) {
    const auto add = [&app](const char* name, std::string& target, Message description) {
        addWord(app, name, target, trUtf8(description)).typeName("FILE");
    };
    declareFailOn(app, options.failOn);
    add("--severities", options.severityFile,
        "Names of severities, else Settings/Severities.toml of the data folder");
    add("--waivers", options.waiverFile, "Findings that are accepted");
    add("--baseline", options.baselineFile,
        "Results of a former run in JSON: only what is not in them fails");
}

void declareRunning(CLI::App& app, RunOptions& options) {
    addFlag(app, "--strict", options.isStrict,
            trUtf8("Run nothing when lint finds something in the rule files"));
    declareOutputs(app, options.format, options.outputs);
    addNumber(app, "-j,--jobs", options.workers, trUtf8("Worker processes, else one a core"))
        .typeName("N");
    addNumber(app, "--timeout", options.timeout, trUtf8("Seconds that a rule may take, else 300"))
        .typeName("SECONDS")
        .within(0.001, 1e9);
    addNumber(app, "--memory", options.memory,
              trUtf8("MB that a worker may take, else its share of four fifths of the machine's"))
        .typeName("MB");
    addWord(app, "--cache", options.cacheFolder,
            trUtf8("Folder of results: what is unchanged is not run again"))
        .typeName("DIR");
    addFlag(app, "--batch", options.batch,
            trUtf8("Run without a user: no message boxes, no progress"));
}

}  // namespace

void declareOutputs(CLI::App& app, std::string& format, std::vector<std::string>& outputs) {
    addWord(app, "--format", format,
            trUtf8("Format of standard output: {0}", results::formatNames()))
        .typeName("FORMAT");
    addWords(app, "--output", outputs, trUtf8("Write a file too; may be repeated"))
        .typeName("FORMAT=FILE")
        .oneEach();
}

void declareFailOn(CLI::App& app, std::string& failOn) {
    addWord(app, "--fail-on", failOn,
            trUtf8("Let only rules of that severity or a graver one decide the exit status"))
        .typeName("SEVERITY");
}

void RunOptions::declare(CLI::App& app) {
    declareParts(app, *this);
    declareSelection(app, *this);
    declareJudgement(app, *this);
    declareRunning(app, *this);
    folders.declare(app);
}

void RunOptions::apply() {
    if (parts.empty()) {
        const CStringW part(corvane::GetEnvironmentText(u"CORVANE_PART"));
        if (!part.IsEmpty()) parts.push_back(part.ToUtf8());
    }
    parts.insert(parts.end(), moreParts.begin(), moreParts.end());
    folders.apply();
}
