#include "system/Clock.h"

#include <ctime>

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

}  // namespace corvane::system
