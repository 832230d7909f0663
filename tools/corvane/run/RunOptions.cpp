#include "run/RunOptions.h"

#include <CLI/CLI.hpp>

#include <corvane/platform/Environment.h>

#include "results/Outputs.h"

namespace {

void declareParts(CLI::App& app, RunOptions& options) {
    app.add_option("--part", options.parts,
                   trUtf8("A part to check, else CORVANE_PART: a file, a folder, a pattern such as "
                          "'parts/*.stl' or @LIST; may be repeated"))
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--parts", options.moreParts,
                   trUtf8("The same for all arguments up to the next option"))
        ->type_name("FILE...");
    addText(app, "--material", options.material, "What the parts are made of")->type_name("NAME");
    addText(app, "--units", options.units, "Unit of parts whose files name none, else mm")
        ->type_name("UNIT");
    app.add_option("--shard", options.shard, trUtf8("Check only the I-th of N shares of the parts"))
        ->type_name("I/N");
}

void declareSelection(CLI::App& app, RunOptions& options) {
    const auto add = [&app](const char* name, std::vector<std::string>& target, Message description,
                            const char* type) {
        app.add_option(name, target, trUtf8(description))->type_name(type)->allow_extra_args(false);
    };
    add("--rule", options.rules, "Only rules of that name; may be a pattern and repeated", "NAME");
    add("--category", options.categories, "Only rules of that category", "NAME");
    add("--severity", options.severities, "Only rules of that severity", "SEVERITY");
}

void declareJudgement(CLI::App& app, RunOptions& options) {
    app.add_option("--fail-on", options.failOn,
                   trUtf8("Let only rules of that severity or a graver one decide the exit status"))
        ->type_name("SEVERITY");
    app.add_option("--severities", options.severityFile,
                   trUtf8("Names of severities, else Settings/Severities.toml of the data folder"))
        ->type_name("FILE");
    app.add_option("--waivers", options.waiverFile, trUtf8("Findings that are accepted"))
        ->type_name("FILE");
    app.add_option("--baseline", options.baselineFile,
                   trUtf8("Results of a former run in JSON: only what is not in them fails"))
        ->type_name("FILE");
}

void declareRunning(CLI::App& app, RunOptions& options) {
    app.add_flag("--strict", options.isStrict,
                 trUtf8("Run nothing when lint finds something in the rule files"));
    app.add_option("--format", options.format,
                   trUtf8("Format of standard output: {0}", results::formatNames()))
        ->type_name("FORMAT");
    app.add_option("--output", options.outputs, trUtf8("Write a file too; may be repeated"))
        ->type_name("FORMAT=FILE")
        ->allow_extra_args(false);
    app.add_option("-j,--jobs", options.workers, trUtf8("Worker processes, else one a core"))
        ->type_name("N");
    app.add_option("--timeout", options.timeout, trUtf8("Seconds that a rule may take, else 300"))
        ->type_name("SECONDS")
        ->check(CLI::Range(0.001, 1e9));
    app.add_option(
           "--memory", options.memory,
           trUtf8("MB that a worker may take, else its share of four fifths of the machine's"))
        ->type_name("MB");
    app.add_option("--cache", options.cacheFolder,
                   trUtf8("Folder of results: what is unchanged is not run again"))
        ->type_name("DIR");
    app.add_flag("--batch", options.batch,
                 trUtf8("Run without a user: no message boxes, no progress"));
}

}  // namespace

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
