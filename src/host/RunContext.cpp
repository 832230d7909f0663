#include <corvane/host/RunContext.h>
#include <corvane/platform/Environment.h>

namespace corvane {
namespace {

thread_local const RunContext* current = nullptr;

}  // namespace

RunContextScope::RunContextScope(const RunContext& context) : former_(current) {
    current = &context;
}

RunContextScope::~RunContextScope() {
    current = former_;
}

const RunContext* CurrentRunContext() {
    return current;
}

CStringW CurrentPartPath() {
    if (current && !current->partPath.IsEmpty()) return current->partPath;
    return GetEnvironmentText(u"CORVANE_PART");
}

}  // namespace corvane
