#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lint/Form.h"
#include "lint/Report.h"
#include "run/Severities.h"
#include "run/WorkerProcess.h"

namespace lint {

/// The severities that have names, and the categories of the user's language.
Vocabulary wordsOf(const Severities& severities);

/// Lints in a process of its own: looking at a compiled rule loads its module, and what that does
/// to its process must cost one problem, not the program.
class LintProcess {
public:
    /// Rule modules are looked for in `moduleFolders`, then in the installation.
    LintProcess(std::vector<std::string> moduleFolders, Vocabulary words);

    /// All problems of a rule file or an index, and of the scripts that its rules run.
    std::vector<Problem> checkFile(const std::string& path);
    /// The problems of the index of user-defined rules; none where no index is configured.
    std::vector<Problem> checkIndex();

private:
    /// Of a file, or of the index.
    std::vector<Problem> ask(const std::optional<std::string>& path);

    std::vector<std::string> moduleFolders_;
    Vocabulary words_;
    std::unique_ptr<WorkerProcess> worker_;
};

/// The work of that process. Gives its exit status.
int runLintWorker();

/// The name of its command, which nobody types.
inline constexpr const char* kLintWorkerCommand = "lint-worker";

}  // namespace lint
