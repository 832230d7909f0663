#include "system/Environment.h"

#include <corvane/platform/Environment.h>

namespace corvane {

std::u16string GetEnvironmentText(std::u16string_view name) {
    return system::environmentVariable(name).value_or(std::u16string());
}

void SetEnvironmentText(std::u16string_view name, std::u16string_view value) {
    system::setEnvironmentVariable(name, value);
}

}  // namespace corvane
