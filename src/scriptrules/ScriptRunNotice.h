#pragma once

#include <corvane/scriptrules/ScriptRunObserver.h>

namespace corvane::scriptrules {

/// True when there is an observer.
bool isObserved();

/// Tells the observer, if there is one, of a finished run.
void notice(const ScriptRun& run);

}  // namespace corvane::scriptrules
