#include <array>
#include <cstddef>
#include <cstdint>

#include "emulation/Components.h"
#include "emulation/HexDigit.h"

namespace corvane::emulation {
namespace {

// A digit for every X; the digits of the first three groups are numbers, the others single bytes.
constexpr std::u16string_view kForm = u"{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
constexpr std::size_t kBytes = sizeof(Guid);

std::array<std::uint8_t, kBytes> bytesOf(const Guid& guid) {
    std::array<std::uint8_t, kBytes> bytes{};
    const std::uint64_t head =
        std::uint64_t{guid.data1} << 32 | std::uint64_t{guid.data2} << 16 | guid.data3;
    for (std::size_t i = 0; i < 8; ++i) {
        bytes[i] = static_cast<std::uint8_t>(head >> (56 - 8 * i));
        bytes[8 + i] = guid.data4[i];
    }
    return bytes;
}

}  // namespace

std::u16string guidText(const Guid& guid) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    const std::array<std::uint8_t, kBytes> bytes = bytesOf(guid);
    std::u16string text(kForm);
    std::size_t digit = 0;
    for (char16_t& unit : text) {
        if (unit != u'X') continue;
        const unsigned byte = bytes[digit / 2];
        unit = kDigits[digit % 2 == 0 ? byte >> 4 : byte & 0xF];
        ++digit;
    }
    return text;
}

std::optional<Guid> guidFromText(std::u16string_view text) {
    if (text.size() != kForm.size()) return std::nullopt;
    std::uint64_t halves[2] = {};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] != u'X') {
            if (text[i] != kForm[i]) return std::nullopt;
            continue;
        }
        const int digit = hexDigit(text[i]);
        if (digit < 0) return std::nullopt;
        std::uint64_t& half = halves[digits++ / kBytes];
        half = half << 4 | static_cast<unsigned>(digit);
    }
    Guid guid{static_cast<std::uint32_t>(halves[0] >> 32),
              static_cast<std::uint16_t>(halves[0] >> 16 & 0xFFFF),
              static_cast<std::uint16_t>(halves[0] & 0xFFFF),
              {}};
    for (std::size_t i = 0; i < guid.data4.size(); ++i)
        guid.data4[i] = static_cast<std::uint8_t>(halves[1] >> (56 - 8 * i));
    return guid;
}

}  // namespace corvane::emulation
