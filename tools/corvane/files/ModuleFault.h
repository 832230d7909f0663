#pragma once

#include <corvane/platform/LoadedModule.h>
#include <corvane/text/CStringW.h>

/// Why the module of that path is not loaded, in a user's words.
CStringW moduleFault(const corvane::LoadedModule& module, const CStringW& path);
