#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Command.h"

/// What a user asks of a run.
struct RunOptions {
    std::vector<std::string> ruleFiles;  ///< Files, folders, patterns, lists.
    std::vector<std::string> parts, moreParts;
    CStringW material, units;
    bool batch = false;
    FolderOptions folders;

    // Which rules.
    std::vector<std::string> rules, categories, severities;
    bool eachOnce = false;  ///< A rule that several files hold alike runs for the first of them.

    bool isStrict = false;  ///< What lint finds in rule files keeps the run from starting.

    // What fails the run.
    std::string severityFile, failOn, waiverFile, baselineFile;

    // Where results go.
    std::string format = "text";
    std::vector<std::string> outputs;  ///< "FORMAT=FILE"

    // How it runs.
    unsigned workers = 0;      ///< 0: one a core.
    double timeout = 300;      ///< Seconds a rule.
    std::uint64_t memory = 0;  ///< MB a worker; 0: a share of the machine's.
    std::string cacheFolder;
    std::string shard;  ///< "I/N"

    /// Declares all of it but the rule files to the parser of a command.
    void declare(CLI::App& app);
    /// Adds what the environment says and joins what several options say.
    void apply();
};

/// Declares where results go: the format of standard output, and files.
void declareOutputs(CLI::App& app, std::string& format, std::vector<std::string>& outputs);
/// Declares which severities decide the exit status.
void declareFailOn(CLI::App& app, std::string& failOn);
