// A script, run twice by the script host as the library runs it, with a small budget.

#include <algorithm>

#include <corvane/platform/ComPtr.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/IScriptProcessor.h>

#include "Fuzz.h"
#include "scripthost/HostRun.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("CORVANE_SCRIPT_MAX_INSTRUCTIONS", "2000000", 1);
    setenv("CORVANE_SCRIPT_MAX_MEMORY_MB", "16", 1);
    setenv("CORVANE_SCRIPT_MAX_SECONDS", "5", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const CStringW text = CStringW::FromUtf8(fuzz::textOf(data, size));
    const Outcome outcome = runScript(text);
    if (!outcome.success) {
        fuzz::require(!outcome.message.empty() && !outcome.type.empty(),
                      "a script that fails says why");
        const auto isEnd = [](char16_t unit) { return unit == u'\n' || unit == u'\r'; };
        const auto lines = std::count_if(text.Std().begin(), text.Std().end(), isEnd) + 1;
        fuzz::require(outcome.line >= -1 && outcome.line < lines, "it fails at one of its lines");
    }
    const Outcome again = runScript(text);
    // The limit counts time too, so a script near it may do either.
    constexpr std::string_view limit = "Limit exceeded";
    if (outcome.type == limit || again.type == limit) return 0;
    fuzz::require(again.success == outcome.success && again.line == outcome.line &&
                      again.type == outcome.type && again.number == outcome.number,
                  "a script does the same each time");
    return 0;
}
