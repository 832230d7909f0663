#pragma once

#include <array>
#include <compare>
#include <cstdint>

/// A 16-byte identifier of a class, an interface or a type library, laid out as in memory on its
/// first platform.
struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};

    friend bool operator==(const Guid&, const Guid&) = default;
};

static_assert(sizeof(Guid) == 16);
