#pragma once

#include <variant>
#include <vector>

#include <corvane/text/CStringW.h>

/// How a run of the program ends.
enum ExitStatus : int {
    kAllPassed = 0,
    kRuleFailed = 1,  ///< A rule failed, was not run or could not be made.
    kUnusable = 2,    ///< Bad usage, or input or output that cannot be read or written.
};

enum class Command { Run, Show, Save };

/// What the user asked for.
struct Options {
    Command command = Command::Run;
    std::vector<CStringW> ruleFiles;
    std::vector<CStringW> moduleFolders;
    CStringW output;  ///< Where `save` writes.
    CStringW part;
    CStringW dataFolder;
    CStringW registryFolder;
    bool batch = false;
};

/// Reads the command line. Gives the exit status instead when help or a mistake ends the program;
/// that is then told already.
std::variant<Options, int> parseOptions(int argc, const char* const* argv);
