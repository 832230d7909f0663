// A script, run by the script host as the library runs it, with a small budget.

#include <corvane/platform/ComPtr.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/IScriptProcessor.h>

#include "Fuzz.h"
#include "scripthost/HostRun.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("CORVANE_SCRIPT_MAX_INSTRUCTIONS", "200000", 1);
    setenv("CORVANE_SCRIPT_MAX_MEMORY_MB", "16", 1);
    setenv("CORVANE_SCRIPT_MAX_SECONDS", "5", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const Outcome outcome = runScript(CStringW::FromUtf8(fuzz::textOf(data, size)));
    fuzz::require(outcome.success || !outcome.message.empty(), "a script that fails says why");
    return 0;
}
