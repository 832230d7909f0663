#include "system/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

namespace corvane::system {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendCodePoint(std::string& out, char32_t point) {
    const auto byte = [&out](char32_t bits) { out += static_cast<char>(bits); };
    if (point < 0x80) {
        byte(point);
    } else if (point < 0x800) {
        byte(0xC0 | (point >> 6));
        byte(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        byte(0xE0 | (point >> 12));
        byte(0x80 | ((point >> 6) & 0x3F));
        byte(0x80 | (point & 0x3F));
    } else {
        byte(0xF0 | (point >> 18));
        byte(0x80 | ((point >> 12) & 0x3F));
        byte(0x80 | ((point >> 6) & 0x3F));
        byte(0x80 | (point & 0x3F));
    }
}

void appendCodePoint(std::u16string& out, char32_t point) {
    if (point < 0x10000) {
        out += static_cast<char16_t>(point);
    } else {
        out += static_cast<char16_t>(0xD7C0 + (point >> 10));
        out += static_cast<char16_t>(0xDC00 | (point & 0x3FF));
    }
}

// The length of the run of ASCII at the front of the text, which is looked at in blocks.
template <typename In>
std::size_t asciiLength(std::basic_string_view<In> text) {
    using Unit = std::make_unsigned_t<In>;
    constexpr std::size_t kBlock = 16;
    std::size_t length = 0;
    for (; text.size() - length >= kBlock; length += kBlock) {
        Unit bits = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            bits = static_cast<Unit>(bits | Unit(text[length + i]));
        if (bits >= 0x80) break;
    }
    while (length < text.size() && Unit(text[length]) < 0x80)
        ++length;
    return length;
}

// Appends the run of ASCII at the front of the text, which is the rule and needs no coding, and
// gives its length.
template <typename Out, typename In>
std::size_t appendAscii(std::basic_string<Out>& out, std::basic_string_view<In> text) {
    const std::size_t length = asciiLength(text);
    const std::size_t start = out.size();
    out.resize(start + length);
    for (std::size_t i = 0; i < length; ++i)
        out[start + i] = static_cast<Out>(text[i]);
    return length;
}

struct Decoded {
    char32_t point;
    std::size_t length;  // bytes taken
    bool valid;
};

// What may follow a lead byte: the number of further bytes and the range of the first of them
// (Unicode, table 3-7).
struct LeadByte {
    std::size_t further;
    std::uint8_t low;
    std::uint8_t high;
};

LeadByte leadByte(std::uint8_t byte) {
    if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF};
    if (byte == 0xE0) return {2, 0xA0, 0xBF};
    if (byte == 0xED) return {2, 0x80, 0x9F};
    if (byte >= 0xE1 && byte <= 0xEF) return {2, 0x80, 0xBF};
    if (byte == 0xF0) return {3, 0x90, 0xBF};
    if (byte >= 0xF1 && byte <= 0xF3) return {3, 0x80, 0xBF};
    if (byte == 0xF4) return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

Decoded decode(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    const std::uint8_t first = at(0);
    if (first < 0x80) return {first, 1, true};
    const LeadByte lead = leadByte(first);
    if (lead.further == 0) return {kReplacement, 1, false};
    char32_t point = first & (0x3F >> lead.further);
    for (std::size_t i = 1; i <= lead.further; ++i) {
        const std::uint8_t low = i == 1 ? lead.low : 0x80;
        const std::uint8_t high = i == 1 ? lead.high : 0xBF;
        if (i >= bytes.size() || at(i) < low || at(i) > high) return {kReplacement, i, false};
        point = (point << 6) | (at(i) & 0x3F);
    }
    return {point, lead.further + 1, true};
}

}  // namespace

void appendUtf8(std::string& out, std::u16string_view text) {
    out.reserve(out.size() + text.size());
    while (!text.empty()) {
        text.remove_prefix(appendAscii(out, text));
        if (text.empty()) break;
        const char32_t point = takeCodePoint(text);
        const bool lone = point >= 0xD800 && point <= 0xDFFF;
        appendCodePoint(out, lone ? kReplacement : point);
    }
}

std::string toUtf8(std::u16string_view text) {
    std::string out;
    appendUtf8(out, text);
    return out;
}

void appendFromUtf8(std::u16string& out, std::string_view bytes) {
    out.reserve(out.size() + bytes.size());
    while (!bytes.empty()) {
        bytes.remove_prefix(appendAscii(out, bytes));
        if (bytes.empty()) break;
        const Decoded decoded = decode(bytes);
        appendCodePoint(out, decoded.point);
        bytes.remove_prefix(decoded.length);
    }
}

std::u16string fromUtf8(std::string_view bytes) {
    std::u16string out;
    appendFromUtf8(out, bytes);
    return out;
}

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const Decoded decoded = decode(bytes);
        if (!decoded.valid) return false;
        bytes.remove_prefix(decoded.length);
    }
    return true;
}

int compareNoCase(std::u16string_view a, std::u16string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) continue;
        const char16_t x = toLower(a[i]);
        const char16_t y = toLower(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace corvane::system
