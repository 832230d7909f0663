#pragma once

#include <cstdint>
#include <string>

namespace corvane::xml {

/// Why a load fails and where; see XMLFault.
struct Fault {
    std::int32_t line = 0;
    std::int32_t column = 0;
    std::string message;

    explicit operator bool() const { return !message.empty(); }
};

}  // namespace corvane::xml
