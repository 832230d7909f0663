#include <utility>

#include <corvane/scriptrules/ScriptRunObserver.h>

#include "scriptrules/ScriptRunNotice.h"

namespace corvane {
namespace {

// Never destroyed, so that a run during the end of the process finds it.
ScriptRunObserver& currentObserver() {
    static ScriptRunObserver& observer = *new ScriptRunObserver;
    return observer;
}

}  // namespace

ScriptRunObserver SetScriptRunObserver(ScriptRunObserver observer) {
    return std::exchange(currentObserver(), std::move(observer));
}

namespace scriptrules {

bool isObserved() {
    return static_cast<bool>(currentObserver());
}

void notice(const ScriptRun& run) {
    // A copy: the observer may replace itself while it runs.
    if (const ScriptRunObserver observer = currentObserver()) observer(run);
}

}  // namespace scriptrules
}  // namespace corvane
