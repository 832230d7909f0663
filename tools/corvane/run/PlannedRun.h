#pragma once

#include "Console.h"
#include "run/RunOptions.h"

/// Plans the run that the options ask for and carries it out. Gives the exit status.
int runRules(const RunOptions& options, Console& console);
