#include "text/Print.h"

#include <charconv>
#include <limits>

namespace corvane::text {
namespace {

template <std::size_t Size, typename... Arguments>
std::u16string printed(Arguments... arguments) {
    char digits[Size];
    const auto [end, error] = std::to_chars(digits, digits + Size, arguments...);
    return {digits, end};
}

}  // namespace

std::u16string printInt32(std::int32_t value) {
    return printed<std::numeric_limits<std::int32_t>::digits10 + 2>(value);
}

std::u16string printUInt32(std::uint32_t value) {
    return printed<std::numeric_limits<std::uint32_t>::digits10 + 1>(value);
}

std::u16string printDouble(double value) {
    constexpr int kPlaces = 6;
    constexpr int kOthers = 3;  // sign, point, and the digit that digits10 leaves out
    return printed<std::numeric_limits<double>::max_exponent10 + kPlaces + kOthers>(
        value, std::chars_format::fixed, kPlaces);
}

}  // namespace corvane::text
