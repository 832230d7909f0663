#pragma once

#include <corvane/scriptrules/ScriptRunObserver.h>

/// Runs a rule without a script, as far as the library gets: it creates the script host and, when
/// `engine` is not empty, hands that to it. The status is then NoScriptName or NotConfigured when
/// the host took everything. Makes the settings folder when that is missing.
corvane::ScriptRun tryHost(const CStringW& engine);

/// True when neither host nor engine kept that run from going on.
bool isAccepted(const corvane::ScriptRun& run);
