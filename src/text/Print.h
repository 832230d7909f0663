#pragma once

#include <cstdint>
#include <string>

namespace corvane::text {

// The counterpart of Scan.h: numbers as the system's files hold them, the same in every locale.

std::u16string printInt32(std::int32_t value);    ///< As "%d" does.
std::u16string printUInt32(std::uint32_t value);  ///< As "%u" does.
std::u16string printDouble(double value);         ///< As "%f" does.

}  // namespace corvane::text
