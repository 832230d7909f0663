#pragma once

#include <string>
#include <string_view>

#include <corvane/base/Export.h>

namespace corvane {

/// The value of an environment variable; an empty text when it is not set.
CORVANE_EXPORT std::u16string GetEnvironmentText(std::u16string_view name);

/// Sets an environment variable of this process. Must not race with a read on another thread.
CORVANE_EXPORT void SetEnvironmentText(std::u16string_view name, std::u16string_view value);

}  // namespace corvane
