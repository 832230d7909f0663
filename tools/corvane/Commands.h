#pragma once

#include "Console.h"
#include "Options.h"

// What the program does. Each gives the exit status.

int runRules(const Options& options, Console& console);
int showRules(const Options& options, Console& console);
int saveRules(const Options& options, Console& console);
