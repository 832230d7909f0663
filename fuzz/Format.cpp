// Formatting, printing and scanning beside the C library. The first byte chooses which; what
// follows is a value and how it is written. Formats as they are, with arguments that do not fit
// them, end well.

#include <bit>
#include <cmath>
#include <cstring>
#include <fuzzer/FuzzedDataProvider.h>
#include <optional>

#include "Fuzz.h"
#include "text/Numbers.h"

namespace {

using corvane::text::ScanResult;

// One conversion that both families define: flags, width, precision.
std::string directive(FuzzedDataProvider& bytes, std::string_view flags) {
    std::string text = "%";
    for (const char flag : flags)
        if (bytes.ConsumeBool()) text += flag;
    if (bytes.ConsumeBool()) text += std::to_string(bytes.ConsumeIntegralInRange(1, 60));
    if (bytes.ConsumeBool()) text += '.' + std::to_string(bytes.ConsumeIntegralInRange(0, 60));
    return text;
}

template <typename Value>
void expectAsPrintf(const std::string& ours, const std::string& theirs, Value value) {
    CStringW text;
    text.Format(CStringW::FromUtf8(ours), value);
    char expected[1000];
    std::snprintf(expected, sizeof expected, theirs.c_str(), value);
    if (text.ToUtf8() == expected) return;
    std::fprintf(stderr, "%s: \"%s\" and not \"%s\"\n", ours.c_str(), text.ToUtf8().c_str(),
                 expected);
    std::abort();
}

void printInteger(FuzzedDataProvider& bytes) {
    const char conversion = bytes.PickValueInArray({'d', 'i', 'u', 'x', 'X', 'o'});
    const bool isSigned = conversion == 'd' || conversion == 'i';
    const std::string start = directive(bytes, isSigned            ? "-0+ "
                                               : conversion == 'u' ? "-0"
                                                                   : "-0#");
    if (isSigned) {
        const auto value = bytes.ConsumeIntegral<long long>();
        expectAsPrintf(start + conversion, start + "ll" + conversion, value);
    } else {
        const auto value = bytes.ConsumeIntegral<unsigned long long>();
        expectAsPrintf(start + conversion, start + "ll" + conversion, value);
    }
}

void printFloat(FuzzedDataProvider& bytes) {
    const char conversion = bytes.PickValueInArray({'f', 'F', 'e', 'E', 'g', 'G'});
    const std::string format = directive(bytes, "-0+ #") + conversion;
    // A text gives round numbers, which random bits hardly ever are.
    const auto value = bytes.ConsumeBool()
                           ? std::bit_cast<double>(bytes.ConsumeIntegral<std::uint64_t>())
                           : std::strtod(bytes.ConsumeRandomLengthString(30).c_str(), nullptr);
    // The sign of what is no number is not told.
    if (!std::isnan(value)) expectAsPrintf(format, format, value);
}

void printText(FuzzedDataProvider& bytes) {
    const std::string format = directive(bytes, "-") + 's';
    std::string text = bytes.ConsumeRandomLengthString(80);
    // The C library counts bytes, so only what is one byte a character is the same.
    std::erase_if(text, [](char c) { return c <= 0; });
    expectAsPrintf(format, format, text.c_str());
}

void printAnything(FuzzedDataProvider& bytes) {
    const CStringW format = CStringW::FromUtf8(bytes.ConsumeRandomLengthString(200));
    const std::string narrow = bytes.ConsumeRandomLengthString(20);
    CStringW text;
    text.Format(format, bytes.ConsumeIntegral<int>(), narrow.c_str(), 2.5, format,
                static_cast<const void*>(nullptr), u'x');
    text.AppendFormat(format, format, bytes.ConsumeIntegral<std::int64_t>(), u"wide");
}

// The part of a text that a decimal number can have, which keeps the C library from words and
// hexadecimal digits.
std::string decimalPart(const std::string& text) {
    return text.substr(0, text.find_first_not_of("0123456789+-.eE"));
}

/// The whole number at the start of a text, modulo 2^32.
std::optional<std::uint32_t> wrappedNumber(std::string_view text) {
    const bool minus = text.starts_with('-');
    if (minus || text.starts_with('+')) text.remove_prefix(1);
    const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
    if (digits.empty()) return std::nullopt;
    std::uint32_t number = 0;
    for (const char digit : digits)
        number = number * 10 + static_cast<std::uint32_t>(digit - '0');
    return minus ? 0 - number : number;
}

void scan(FuzzedDataProvider& bytes) {
    const std::string text = decimalPart(bytes.ConsumeRandomLengthString(400));
    const CStringW wide = CStringW::FromUtf8(text);
    double number = 77;
    const ScanResult result = corvane::text::scanDouble(wide, number);
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const bool matches = end != text.c_str();
    fuzz::require((result == ScanResult::Matched) == matches, "the same texts are numbers");
    if (matches)
        fuzz::require(std::memcmp(&number, &expected, sizeof number) == 0,
                      "they have the same value");

    std::int32_t whole = 77;
    const bool isWhole = corvane::text::scanInt32(wide, whole) == ScanResult::Matched;
    const std::optional<std::uint32_t> wrapped = wrappedNumber(text);
    fuzz::require(isWhole == wrapped.has_value(), "the same texts are whole numbers");
    fuzz::require(!wrapped || whole == static_cast<std::int32_t>(*wrapped), "whole numbers wrap");
}

void printAndScan(FuzzedDataProvider& bytes) {
    const auto whole = bytes.ConsumeIntegral<std::int32_t>();
    std::int32_t read = 0;
    corvane::text::scanInt32(corvane::text::printInt32(whole), read);
    fuzz::require(read == whole, "a whole number comes back");
    const auto number = std::bit_cast<double>(bytes.ConsumeIntegral<std::uint64_t>());
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", number);
    fuzz::require(
        !std::isfinite(number) || CStringW(corvane::text::printDouble(number)).ToUtf8() == expected,
        "a number is printed as the C library prints it");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    FuzzedDataProvider bytes(data, size);
    constexpr void (*kChoices[])(FuzzedDataProvider&) = {printInteger,  printFloat, printText,
                                                         printAnything, scan,       printAndScan};
    bytes.PickValueInArray(kChoices)(bytes);
    return 0;
}
