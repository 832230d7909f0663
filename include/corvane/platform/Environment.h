#pragma once

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// The value of an environment variable; an empty text when it is not set.
CORVANE_EXPORT CStringW GetEnvironmentText(const CStringW& name);

/// Sets an environment variable of this process. Must not race with a read on another thread.
CORVANE_EXPORT void SetEnvironmentText(const CStringW& name, const CStringW& value);

}  // namespace corvane
