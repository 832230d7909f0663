#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>
#include <system_error>

#include <corvane/text/CStringW.h>
#include <corvane/text/Format.h>

#include "system/Unicode.h"

namespace corvane {
namespace {

constexpr int kLimit = 4096;  // widest field and longest precision

struct Conversion {
    bool leftAligned = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
    char16_t letter = 0;
};

bool isOneOf(char16_t unit, std::u16string_view units) {
    return units.find(unit) != std::u16string_view::npos;
}

// Hands out the arguments in order; after the last one there is nothing.
class Arguments {
public:
    explicit Arguments(std::span<const FormatArgument> list) : list_(list) {}

    const FormatArgument::Value* next() {
        if (list_.empty()) return nullptr;
        const auto* value = &list_.front().value();
        list_ = list_.subspan(1);
        return value;
    }

    // The argument that a `*` takes.
    int nextNumber() {
        const auto* value = next();
        const auto* number = value ? std::get_if<FormatArgument::Integer>(value) : nullptr;
        if (!number) return 0;
        const auto signedValue = static_cast<std::int64_t>(number->bits);
        return static_cast<int>(std::clamp<std::int64_t>(signedValue, -kLimit, kLimit));
    }

private:
    std::span<const FormatArgument> list_;
};

int parseNumber(std::u16string_view format, std::size_t& at) {
    int number = 0;
    while (at < format.size() && format[at] >= u'0' && format[at] <= u'9') {
        number = std::min(number * 10 + static_cast<int>(format[at] - u'0'), kLimit);
        ++at;
    }
    return number;
}

void parseFlags(std::u16string_view format, std::size_t& at, Conversion& conversion) {
    for (; at < format.size() && isOneOf(format[at], u"-+ #0"); ++at) {
        switch (format[at]) {
            case u'-':
                conversion.leftAligned = true;
                break;
            case u'+':
                conversion.plus = true;
                break;
            case u' ':
                conversion.blank = true;
                break;
            case u'#':
                conversion.alternate = true;
                break;
            default:
                conversion.zero = true;
                break;
        }
    }
}

void skipLengthLetters(std::u16string_view format, std::size_t& at) {
    if (format.substr(at, 3) == u"I64" || format.substr(at, 3) == u"I32") at += 3;
    while (at < format.size() && isOneOf(format[at], u"hlLwjztI"))
        ++at;
}

// Reads what follows a "%" and moves `at` past it. A letter of 0 means that the format ends
// too early.
Conversion parseConversion(std::u16string_view format, std::size_t& at, Arguments& arguments) {
    Conversion conversion;
    parseFlags(format, at, conversion);
    if (at < format.size() && format[at] == u'*') {
        ++at;
        conversion.width = arguments.nextNumber();
        if (conversion.width < 0) conversion.leftAligned = true;
        conversion.width = std::abs(conversion.width);
    } else {
        conversion.width = parseNumber(format, at);
    }
    if (at < format.size() && format[at] == u'.') {
        ++at;
        if (at < format.size() && format[at] == u'*') {
            ++at;
            conversion.precision = std::max(arguments.nextNumber(), -1);
        } else {
            conversion.precision = parseNumber(format, at);
        }
    }
    skipLengthLetters(format, at);
    if (at < format.size()) conversion.letter = format[at++];
    return conversion;
}

// Appends prefix (sign or base) and body in a field of the conversion's width.
void appendField(std::u16string& out, const Conversion& conversion, std::u16string_view prefix,
                 std::u16string_view body, bool zeroFill) {
    const std::size_t length = prefix.size() + body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t fill = width > length ? width - length : 0;
    const bool zeros = zeroFill && conversion.zero && !conversion.leftAligned;
    if (!conversion.leftAligned && !zeros) out.append(fill, u' ');
    out += prefix;
    if (zeros) out.append(fill, u'0');
    out += body;
    if (conversion.leftAligned) out.append(fill, u' ');
}

std::u16string_view signPrefix(const Conversion& conversion, bool negative) {
    if (negative) return u"-";
    if (conversion.plus) return u"+";
    return conversion.blank ? u" " : u"";
}

std::u16string digits(std::uint64_t value, int base, bool upper) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, base);
    std::u16string text(buffer, end);
    if (upper) std::transform(text.begin(), text.end(), text.begin(), system::toUpper);
    return text;
}

// The bits that the argument's own type has; a negative `int` is eight hexadecimal digits, not
// sixteen.
std::uint64_t unsignedValue(const FormatArgument::Integer& number) {
    return number.width >= 8 ? number.bits
                             : number.bits & ((std::uint64_t{1} << (number.width * 8)) - 1);
}

void appendInteger(std::u16string& out, const Conversion& conversion,
                   const FormatArgument::Integer& number) {
    const char16_t letter = conversion.letter;
    std::uint64_t value = unsignedValue(number);
    std::u16string_view prefix;
    if (letter == u'd' || letter == u'i') {
        const bool negative = number.isSigned && static_cast<std::int64_t>(number.bits) < 0;
        if (number.isSigned) value = negative ? 0 - number.bits : number.bits;
        prefix = signPrefix(conversion, negative);
    } else if (conversion.alternate && value != 0 && isOneOf(letter, u"xX")) {
        prefix = letter == u'x' ? u"0x" : u"0X";
    }
    const int base = isOneOf(letter, u"xX") ? 16 : letter == u'o' ? 8 : 10;
    std::u16string body = digits(value, base, letter == u'X');
    if (conversion.precision == 0 && value == 0) body.clear();
    const auto least = static_cast<std::size_t>(std::max(conversion.precision, 0));
    if (body.size() < least) body.insert(0, least - body.size(), u'0');
    // The alternate octal form adds a zero only where none leads already.
    if (conversion.alternate && letter == u'o' && !body.starts_with(u'0')) body.insert(0, 1, u'0');
    appendField(out, conversion, prefix, body, conversion.precision < 0);
}

std::string printed(double magnitude, std::chars_format format, int precision) {
    constexpr std::size_t kLongestWhole = 309;
    constexpr std::size_t kOthers = 10;  // point and exponent
    std::string text(static_cast<std::size_t>(precision) + kLongestWhole + kOthers, '\0');
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), magnitude, format, precision);
    text.resize(static_cast<std::size_t>(end - text.data()));
    return text;
}

// The general form with its trailing zeros, which std::to_chars leaves out.
std::string printedWithZeros(double magnitude, int precision) {
    const int digitCount = std::max(precision, 1);
    std::string scientific = printed(magnitude, std::chars_format::scientific, digitCount - 1);
    const int exponent = std::atoi(scientific.c_str() + scientific.find('e') + 1);
    if (exponent < -4 || exponent >= digitCount) return scientific;
    return printed(magnitude, std::chars_format::fixed, digitCount - 1 - exponent);
}

std::string floatBody(const Conversion& conversion, double magnitude) {
    const int precision = conversion.precision < 0 ? 6 : conversion.precision;
    const bool general = isOneOf(conversion.letter, u"gG");
    std::string body;
    if (general && conversion.alternate) {
        body = printedWithZeros(magnitude, precision);
    } else {
        const std::chars_format format = general ? std::chars_format::general
                                         : isOneOf(conversion.letter, u"eE")
                                             ? std::chars_format::scientific
                                             : std::chars_format::fixed;
        body = printed(magnitude, format, precision);
    }
    if (conversion.alternate && body.find('.') == body.npos)
        body.insert(std::min(body.find('e'), body.size()), 1, '.');
    return body;
}

void appendDouble(std::u16string& out, const Conversion& conversion, double value) {
    const std::u16string_view prefix = signPrefix(conversion, std::signbit(value));
    const bool upper = isOneOf(conversion.letter, u"FEG");
    const double magnitude = std::fabs(value);
    if (!std::isfinite(value)) {
        const bool infinite = std::isinf(value);
        const std::u16string_view name =
            infinite ? (upper ? u"INF" : u"inf") : (upper ? u"NAN" : u"nan");
        appendField(out, conversion, prefix, name, false);
        return;
    }
    const std::string bytes = floatBody(conversion, magnitude);
    std::u16string body(bytes.begin(), bytes.end());
    if (upper) std::transform(body.begin(), body.end(), body.begin(), system::toUpper);
    appendField(out, conversion, prefix, body, true);
}

void appendString(std::u16string& out, const Conversion& conversion, std::u16string_view text) {
    if (conversion.precision >= 0)
        text = text.substr(0, static_cast<std::size_t>(conversion.precision));
    appendField(out, conversion, {}, text, false);
}

void appendText(std::u16string& out, const Conversion& conversion,
                const FormatArgument::Value& value) {
    if (const auto* wide = std::get_if<std::u16string_view>(&value)) {
        appendString(out, conversion, *wide);
    } else if (const auto* narrow = std::get_if<std::string_view>(&value)) {
        appendString(out, conversion, system::fromUtf8(*narrow));
    }
}

void appendPointer(std::u16string& out, const Conversion& conversion, const void* pointer) {
    std::u16string text = digits(reinterpret_cast<std::uintptr_t>(pointer), 16, true);
    text.insert(0, 16 - std::min<std::size_t>(text.size(), 16), u'0');
    appendField(out, conversion, {}, text, false);
}

void appendArgument(std::u16string& out, const Conversion& conversion,
                    const FormatArgument::Value& value) {
    const auto* number = std::get_if<FormatArgument::Integer>(&value);
    const char16_t letter = conversion.letter;
    if (isOneOf(letter, u"diuxXo")) {
        if (number) appendInteger(out, conversion, *number);
    } else if (isOneOf(letter, u"fFeEgG")) {
        if (const auto* real = std::get_if<double>(&value)) appendDouble(out, conversion, *real);
    } else if (isOneOf(letter, u"cC")) {
        const auto unit = number ? static_cast<char16_t>(number->bits) : u'\0';
        if (number) appendField(out, conversion, {}, std::u16string_view(&unit, 1), false);
    } else if (letter == u'p') {
        if (const auto* pointer = std::get_if<const void*>(&value)) {
            appendPointer(out, conversion, *pointer);
        }
    } else {
        appendText(out, conversion, value);
    }
}

}  // namespace

FormatArgument::FormatArgument(const CStringW& text) : value_(text.View()) {}

void formatText(std::u16string& out, std::u16string_view format,
                std::span<const FormatArgument> list) {
    Arguments arguments(list);
    std::size_t at = 0;
    while (at < format.size()) {
        const std::size_t percent = std::min(format.find(u'%', at), format.size());
        out += format.substr(at, percent - at);
        if (percent == format.size()) return;
        at = percent + 1;
        const Conversion conversion = parseConversion(format, at, arguments);
        if (conversion.letter == u'%') {
            out += u'%';
        } else if (!isOneOf(conversion.letter, u"diuxXocCsSfFeEgGp")) {
            out += format.substr(percent, at - percent);
        } else if (const auto* value = arguments.next()) {
            appendArgument(out, conversion, *value);
        }
    }
}

}  // namespace corvane
