#include "emulation/RegistryData.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "emulation/HexDigit.h"
#include "system/Locale.h"
#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

namespace {

enum RegistryType : std::uint32_t { Text = 1, ExpandableText = 2, Binary = 3, Number = 4 };

constexpr std::size_t kDigitsOfByte = 2;
constexpr std::size_t kDigitsOfNumber = 8;

std::optional<std::uint32_t> takeHex(std::u16string_view& rest, std::size_t mostDigits) {
    std::uint32_t number = 0;
    std::size_t digits = 0;
    while (digits < rest.size()) {
        const int digit = hexDigit(rest[digits]);
        if (digit < 0) break;
        if (++digits > mostDigits) return std::nullopt;
        number = number << 4 | static_cast<std::uint32_t>(digit);
    }
    if (digits == 0) return std::nullopt;
    rest.remove_prefix(digits);
    return number;
}

bool takeWord(std::u16string_view& rest, std::u16string_view word) {
    if (compareNoCase(rest.substr(0, word.size()), word) != 0) return false;
    rest.remove_prefix(word.size());
    return true;
}

// Appends the bytes of one line; false when something else stands between them. `continued` tells
// whether a backslash at the end announces a further line.
bool appendBytes(std::string& bytes, std::u16string_view line, bool& continued) {
    continued = line.ends_with(u'\\');
    if (continued) line.remove_suffix(1);
    for (line = trimmed(line); !isLineEnd(line); line = trimmed(line)) {
        const std::optional<std::uint32_t> byte = takeHex(line, kDigitsOfByte);
        if (!byte) return false;
        bytes += static_cast<char>(*byte);
        line = trimmed(line);
        if (line.starts_with(u','))
            line.remove_prefix(1);
        else if (!isLineEnd(line))
            return false;
    }
    return true;
}

// A line that begins like a key or a value is no continuation, whatever was announced before it.
std::optional<std::string> readBytes(std::u16string_view line, TextLines& lines) {
    std::string bytes;
    bool continued = false;
    bool valid = appendBytes(bytes, line, continued);
    while (continued) {
        const std::optional<std::u16string_view> next = lines.peek();
        if (!next || (next->front() != u'\\' && hexDigit(next->front()) < 0)) return std::nullopt;
        lines.next();
        std::string more;
        valid = appendBytes(more, *next, continued) && valid;
        bytes += more;
    }
    if (!valid) return std::nullopt;
    return bytes;
}

// Whoever reads it takes it up to the first zero.
RegistryValue textValue(std::u16string text) {
    text.resize(std::min(text.find(u'\0'), text.size()));
    return {std::move(text), std::nullopt};
}

std::optional<RegistryValue> readHex(std::u16string_view text, TextLines& lines, bool eightBit) {
    std::uint32_t type = Binary;
    bool valid = true;
    if (text.starts_with(u'(')) {
        text.remove_prefix(1);
        const std::optional<std::uint32_t> given = takeHex(text, kDigitsOfNumber);
        valid = given && takeWord(text, u")");
        type = given.value_or(Binary);
    }
    valid = takeWord(text, u":") && valid;
    const std::optional<std::string> bytes = readBytes(text, lines);
    if (!valid || !bytes) return std::nullopt;
    if (type == Text || type == ExpandableText)
        return textValue(eightBit ? widen(*bytes) : fromUtf16Bytes(*bytes));
    if (type != Number || bytes->size() != sizeof(std::uint32_t)) return RegistryValue();
    std::uint32_t number = 0;
    for (std::size_t i = bytes->size(); i-- > 0;)
        number = number << 8 | static_cast<std::uint8_t>((*bytes)[i]);
    return RegistryValue{std::nullopt, number};
}

}  // namespace

std::optional<std::u16string> takeQuoted(std::u16string_view& rest) {
    if (!rest.starts_with(u'"')) return std::nullopt;
    std::u16string text;
    for (std::size_t i = 1; i < rest.size(); ++i) {
        const bool escape = rest[i] == u'\\' && i + 1 < rest.size() &&
                            (rest[i + 1] == u'\\' || rest[i + 1] == u'"');
        if (escape) {
            ++i;
        } else if (rest[i] == u'"') {
            rest.remove_prefix(i + 1);
            return text;
        }
        text += rest[i];
    }
    return std::nullopt;
}

bool isLineEnd(std::u16string_view rest) {
    rest = trimmed(rest);
    return rest.empty() || rest.front() == u';';
}

std::optional<RegistryValue> readRegistryData(std::u16string_view text, TextLines& lines,
                                              bool eightBit) {
    if (takeWord(text, u"hex")) return readHex(text, lines, eightBit);
    if (takeWord(text, u"dword:")) {
        text = trimmed(text);
        const std::optional<std::uint32_t> number = takeHex(text, kDigitsOfNumber);
        if (!number || !isLineEnd(text)) return std::nullopt;
        return RegistryValue{std::nullopt, *number};
    }
    std::optional<std::u16string> quoted = takeQuoted(text);
    if (!quoted || !isLineEnd(text)) return std::nullopt;
    return textValue(*std::move(quoted));
}

}  // namespace corvane::emulation
