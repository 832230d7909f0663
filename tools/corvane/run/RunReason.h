#pragma once

#include <vector>

#include <corvane/scriptrules/ScriptRunObserver.h>
#include <corvane/text/CStringW.h>

/// Why a script rule did not succeed, in words that say what to mend; nothing for success and for a
/// run without script folder, which reading the rule has told already.
std::vector<CStringW> reasonsOf(const corvane::ScriptRun& run);

/// True when the script says that the part does not meet the rule; false when it, or something
/// before it, could not do its work.
bool saysNotMet(const corvane::ScriptRun& run);
