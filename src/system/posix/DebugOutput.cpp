#include "system/Diagnostics.h"
#include "system/Environment.h"

namespace corvane::system {

void debugOutput(std::u16string_view text) {
    if (environmentVariable(u"CORVANE_DEBUG_OUTPUT")) writeStandardError(text);
}

}  // namespace corvane::system
