#pragma once

namespace corvane::system {

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

}  // namespace corvane::system
