#pragma once

#include <cstdint>
#include <type_traits>

/// 32-bit signed number of the interface. It is `long` where `long` has 32 bits, as on Windows, and
/// that type is the one that modules are built with; no code depends on whether it is the same type
/// as `int`.
using QorLong = std::conditional_t<sizeof(long) == 4, long, std::int32_t>;
/// 32-bit unsigned number of the interface, `unsigned long` where QorLong is `long`.
using QorULong = std::conditional_t<sizeof(long) == 4, unsigned long, std::uint32_t>;

static_assert(sizeof(QorLong) == 4 && sizeof(QorULong) == 4);
