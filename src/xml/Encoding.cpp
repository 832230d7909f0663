#include "xml/Encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "system/Unicode.h"
#include "xml/Names.h"
#include "xml/Node.h"

namespace corvane::xml {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr char16_t kMark = 0xFEFF;

// The characters of windows-1252 from 0x80 to 0x9F; five bytes have none.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

bool isBlank(char unit) {
    return isWhite(static_cast<unsigned char>(unit));
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& unit : lower) {
        if (unit >= 'A' && unit <= 'Z') unit = static_cast<char>(unit - 'A' + 'a');
    }
    return lower;
}

// The encoding that an XML declaration names, in lower case; empty without one. The parser judges
// the declaration itself later.
std::string declaredEncoding(std::string_view text) {
    constexpr std::string_view kKey = "encoding";
    if (!text.starts_with("<?xml") || text.size() < 6 || !isBlank(text[5])) return {};
    text = text.substr(0, text.find("?>"));
    const std::size_t key = text.find(kKey);
    if (key == text.npos) return {};
    text.remove_prefix(key + kKey.size());
    const std::size_t quote = text.find_first_of("'\"");
    if (quote == text.npos) return {};
    const std::size_t end = text.find(text[quote], quote + 1);
    if (end == text.npos) return {};
    return lowerCase(text.substr(quote + 1, end - quote - 1));
}

// True for the name of an encoding that some parser may know, though this one need not.
bool isKnown(std::string_view encoding) {
    constexpr std::string_view kFamilies[] = {
        "utf",  "ucs", "iso",  "us-ascii",  "ascii", "latin", "windows-", "cp", "ibm",
        "koi8", "gb",  "big5", "shift_jis", "euc-",  "ks_c",  "hz-",      "x-", "mac"};
    return std::any_of(std::begin(kFamilies), std::end(kFamilies),
                       [&](std::string_view family) { return encoding.starts_with(family); });
}

Decoded faulty(std::string message) {
    Decoded result;
    result.fault.message = std::move(message);
    return result;
}

Decoded contradicted(const std::string& declared) {
    return faulty("The bytes are not in the declared encoding " + declared);
}

// Where half a surrogate pair is, or npos.
std::size_t findHalfPair(std::u16string_view text) {
    for (std::u16string_view rest = text; !rest.empty();) {
        const std::size_t at = text.size() - rest.size();
        if (isHalfPair(takeCodePoint(rest))) return at;
    }
    return text.npos;
}

Decoded decodeUnits(std::u16string_view text) {
    if (!text.empty() && text.front() == kMark) text.remove_prefix(1);
    const std::size_t half = findHalfPair(text);
    if (half != text.npos) {
        Decoded result = faulty("Half a surrogate pair");
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(half);
        result.fault.line = 1 + static_cast<std::int32_t>(std::count(text.begin(), end, u'\n'));
        return result;
    }
    Decoded result;
    system::appendUtf8(result.buffer, text);
    return result;
}

Decoded decodeUtf16(std::string_view bytes, bool littleEndian) {
    if (bytes.size() % 2 != 0) return faulty("The file ends within a character");
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<std::uint8_t>(bytes[2 * i]);
        const auto second = static_cast<std::uint8_t>(bytes[2 * i + 1]);
        units[i] = static_cast<char16_t>(littleEndian ? first | second << 8 : first << 8 | second);
    }
    Decoded result = decodeUnits(units);
    if (result.fault) return result;
    const std::string declared = declaredEncoding(result.text());
    const std::string_view exact = littleEndian ? "utf-16le" : "utf-16be";
    if (!declared.empty() && declared != "utf-16" && declared != exact)
        return contradicted(declared);
    return result;
}

Decoded decodeBytes(std::string_view bytes, bool windows) {
    std::u16string units;
    units.reserve(bytes.size());
    for (const char byte : bytes) {
        auto unit = static_cast<char16_t>(static_cast<std::uint8_t>(byte));
        if (windows && unit >= 0x80 && unit <= 0x9F) {
            unit = kWindows1252[unit - 0x80U];
            if (unit == 0) return contradicted("windows-1252");
        }
        units += unit;
    }
    Decoded result;
    system::appendUtf8(result.buffer, units);
    return result;
}

}  // namespace

Decoded decodeFile(const std::string& file) {
    std::string_view bytes = file;
    if (bytes.starts_with("\xFF\xFE")) return decodeUtf16(bytes, true);
    if (bytes.starts_with("\xFE\xFF")) return decodeUtf16(bytes, false);
    const bool marked = bytes.starts_with(kUtf8Mark);
    if (marked) bytes.remove_prefix(kUtf8Mark.size());

    const std::string declared = declaredEncoding(bytes);
    const bool utf8 = declared.empty() || declared == "utf-8" || declared == "utf8";
    if (marked && !utf8) return contradicted(declared);
    if (declared.starts_with("utf-16") || declared.starts_with("utf16"))
        return contradicted(declared);
    if (declared == "iso-8859-1" || declared == "latin1" || declared == "iso_8859-1")
        return decodeBytes(bytes, false);
    if (declared == "windows-1252" || declared == "cp1252") return decodeBytes(bytes, true);
    if (declared == "us-ascii" || declared == "ascii") {
        const auto isHigh = [](char byte) { return static_cast<std::uint8_t>(byte) >= 0x80; };
        if (std::any_of(bytes.begin(), bytes.end(), isHigh)) return contradicted(declared);
    } else if (!utf8) {
        return faulty("The encoding " + declared + " is not supported");
    }
    Decoded result;
    result.given = bytes;
    return result;
}

Decoded decodeText(std::u16string_view text) {
    Decoded result = decodeUnits(text);
    const std::string declared = declaredEncoding(result.text());
    if (result.fault || declared.empty() || isKnown(declared)) return result;
    return faulty("The encoding " + declared + " is not known");
}

}  // namespace corvane::xml
