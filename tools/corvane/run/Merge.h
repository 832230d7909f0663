#pragma once

#include <string>
#include <vector>

#include "results/Result.h"

/// A file of results to be merged.
struct NamedRun {
    std::string path;
    results::Run run;
};

struct MergedRun {
    results::Run run;
    std::vector<std::string> problems;  ///< What is missing, double or of another run.
};

/// Joins results. Shares of one run come back into its order, and what the run had and the files
/// have not is told; other results follow one another in the order given, with new numbers. Of a
/// part that is there twice the first one counts.
MergedRun merge(std::vector<NamedRun> runs);
