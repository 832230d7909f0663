#include "platform/DebugOutput.h"

#include "platform/Environment.h"
#include "platform/posix/StandardError.h"

namespace corvane::platform {

void debugOutput(std::u16string_view text) {
    if (environmentVariable(u"CORVANE_DEBUG_OUTPUT")) writeStandardError(text);
}

}  // namespace corvane::platform
