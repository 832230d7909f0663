#pragma once

#include <cstdint>

/// 32-bit signed number of the interface. It is `long` where `long` has 32 bits and that type is
/// the one that modules are built with; no code depends on whether it is the same type as `int`.
#ifdef _WIN32
using QorLong = long;
using QorULong = unsigned long;
#else
using QorLong = std::int32_t;
using QorULong = std::uint32_t;
#endif

static_assert(sizeof(QorLong) == 4 && sizeof(QorULong) == 4);
