#include "system/Environment.h"

#include <cstdlib>

#include "system/Unicode.h"

namespace corvane::system {

std::optional<std::u16string> environmentVariable(std::u16string_view name) {
    if (name.find(u'\0') != name.npos) return std::nullopt;
    return environmentVariableOfBytes(toUtf8(name));
}

std::optional<std::u16string> environmentVariableOfBytes(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    if (!value) return std::nullopt;
    return fromUtf8(value);
}

void setEnvironmentVariable(std::u16string_view name, std::u16string_view value) {
    if (name.find(u'\0') != name.npos) return;
    ::setenv(toUtf8(name).c_str(), toUtf8(value).c_str(), 1);
}

}  // namespace corvane::system
