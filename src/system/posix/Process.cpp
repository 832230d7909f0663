#include "system/Process.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

#include "system/Unicode.h"
#include "system/posix/FileOperations.h"

namespace corvane::system {

LocalTime localTime() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    std::tm fields{};
    ::localtime_r(&now.tv_sec, &fields);
    constexpr long kNanosecondsInMillisecond = 1'000'000;
    return {fields.tm_year + 1900,
            fields.tm_mon + 1,
            fields.tm_mday,
            fields.tm_hour,
            fields.tm_min,
            fields.tm_sec,
            static_cast<int>(now.tv_nsec / kNanosecondsInMillisecond)};
}

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

void debugOutput(std::u16string_view text) {
    if (environmentVariable(u"CORVANE_DEBUG_OUTPUT")) writeStandardError(text);
}

namespace {

bool isControl(char16_t unit) {
    if (unit == u'\t' || unit == u'\n') return false;
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

void writeStandardError(std::u16string_view text) {
    std::u16string shown(text);
    std::replace_if(shown.begin(), shown.end(), isControl, u'\uFFFD');
    std::string line = toUtf8(shown);
    line += '\n';
    writeAll(STDERR_FILENO, line);
}

}  // namespace corvane::system
