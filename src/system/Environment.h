#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::system {

/// The value of an environment variable, or nothing when it is not set. A variable that is set and
/// empty gives an empty text.
std::optional<std::u16string> environmentVariable(std::u16string_view name);

/// The same by the bytes of a name as the system has it, up to the first zero.
std::optional<std::u16string> environmentVariableOfBytes(const std::string& name);

/// Sets a variable for this process and the modules in it. Must not race with a read on another
/// thread.
void setEnvironmentVariable(std::u16string_view name, std::u16string_view value);

}  // namespace corvane::system
