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

struct LocalTime {
    int year;
    int month;  ///< 1 to 12
    int day;    ///< 1 to 31
    int hour;
    int minute;
    int second;
    int millisecond;
};

/// The time of day where the user is, now.
LocalTime localTime();

/// A line for people who debug the process. On POSIX it goes to standard error when
/// CORVANE_DEBUG_OUTPUT is set, and nowhere otherwise.
void debugOutput(std::u16string_view text);

/// Writes a text and a line end to standard error. Control characters other than tab and line end
/// become U+FFFD: the text may come out of a foreign file and must not steer a terminal.
void writeStandardError(std::u16string_view text);

}  // namespace corvane::system
