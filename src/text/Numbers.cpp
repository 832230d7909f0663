#include "text/Numbers.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace corvane::text {

namespace {

std::u16string_view skipSpace(std::u16string_view text) {
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    return text.substr(static_cast<std::size_t>(first - text.begin()));
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// The longest start of the text that can belong to a number, as bytes for the conversion.
std::string numberBytes(std::u16string_view text) {
    constexpr std::u16string_view kOthers = u"+-.eE";
    std::string bytes;
    for (const char16_t unit : text) {
        if (!isDigit(unit) && kOthers.find(unit) == std::u16string_view::npos) break;
        bytes += static_cast<char>(unit);
    }
    return bytes;
}

// The value of an exponent's digits, cut where it outweighs a text of any length.
std::int64_t exponentOf(std::string_view digits) {
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) digits.remove_prefix(1);
    constexpr std::int64_t kMost = 1'000'000'000'000'000;
    std::int64_t exponent = 0;
    for (const char digit : digits)
        exponent = std::min(exponent * 10 + (digit - '0'), kMost);
    return negative ? -exponent : exponent;
}

// from_chars leaves the value alone when it is out of range, and does not tell too large from too
// small: the power of ten of the first digit that counts does.
double outOfRange(std::string_view number) {
    const bool negative = number.front() == '-';
    if (negative) number.remove_prefix(1);
    const std::size_t mantissa = std::min(number.find_first_of("eE"), number.size());
    const std::int64_t exponent = exponentOf(number.substr(std::min(mantissa + 1, number.size())));
    number = number.substr(0, mantissa);
    const auto point = static_cast<std::int64_t>(std::min(number.find('.'), mantissa));
    const auto first = static_cast<std::int64_t>(number.find_first_of("123456789"));
    const double magnitude =
        point - first + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negative ? -magnitude : magnitude;
}

}  // namespace

bool isSpace(char16_t unit) {
    return (unit >= 0x09 && unit <= 0x0D) || unit == 0x20 || unit == 0x85 || unit == 0xA0 ||
           unit == 0x1680 || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 ||
           unit == 0x2029 || unit == 0x202F || unit == 0x205F || unit == 0x3000;
}

ScanResult scanInt32(std::u16string_view text, std::int32_t& value) {
    text = skipSpace(text);
    if (text.empty()) return ScanResult::EndOfInput;
    const bool negative = text.front() == u'-';
    if (negative || text.front() == u'+') text.remove_prefix(1);
    if (text.empty() || !isDigit(text.front())) return ScanResult::NoMatch;
    std::uint32_t magnitude = 0;
    for (const char16_t unit : text) {
        if (!isDigit(unit)) break;
        magnitude = magnitude * 10 + static_cast<std::uint32_t>(unit - u'0');
    }
    value = static_cast<std::int32_t>(negative ? 0 - magnitude : magnitude);
    return ScanResult::Matched;
}

ScanResult scanDouble(std::u16string_view text, double& value) {
    text = skipSpace(text);
    if (text.empty()) return ScanResult::EndOfInput;
    if (text.front() == u'+') {
        text.remove_prefix(1);
        if (text.empty() || text.front() == u'-') return ScanResult::NoMatch;
    }
    const std::string bytes = numberBytes(text);
    double number = 0;
    const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
    if (error == std::errc::invalid_argument) return ScanResult::NoMatch;
    value = error == std::errc::result_out_of_range
                ? outOfRange(
                      std::string_view(bytes.data(), static_cast<std::size_t>(end - bytes.data())))
                : number;
    return ScanResult::Matched;
}

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
