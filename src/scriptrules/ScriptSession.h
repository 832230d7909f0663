#pragma once

#include <cstdint>

#include <corvane/platform/ComPtr.h>
#include <corvane/scriptrules/IScriptProcessor.h>
#include <corvane/scriptrules/ScriptRunObserver.h>
#include <corvane/text/CStringList.h>
#include <corvane/text/CStringW.h>

namespace corvane::scriptrules {

/// True when there is an observer.
bool isObserved();

/// Tells the observer, if there is one, of a finished run.
void notice(const ScriptRun& run);

/// The script host for the length of one run, inside a ComponentRuntime. Each step
/// gives false when the run ends with it, and notes in the run how.
class ScriptSession {
public:
    explicit ScriptSession(ScriptRun& run) : run_(run) {}

    bool createHost();
    /// Hands over the engines up to the first that the host refuses.
    bool addEngines(const CStringList& engines);
    /// Hands the script over, prepares it and runs it to its end. The host has a copy of its own,
    /// so the text is gone before the script runs.
    bool runScript(CStringW script);

    /// What the user is told of a script that failed, below a line that names the rule.
    const CStringW& report() const { return report_; }

private:
    HResult findHost();
    bool refused(HResult status, const char16_t* operation);
    void fetchError();

    ScriptRun& run_;
    ATL::CComPtr<IScriptProcessor> host_;
    CStringW report_;
};

}  // namespace corvane::scriptrules
