#include "Geometry.h"

#include <bit>
#include <string>
#include <vector>

namespace results {

namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// RFC 4648, with padding.
std::string base64(const std::vector<unsigned char>& bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8U | (at + i < bytes.size() ? bytes[at + i] : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            text += at + i > bytes.size() ? '=' : kDigits[group >> (18 - 6 * i) & 63U];
    }
    return text;
}

/// Little-endian on every machine, as scripts of a page read them.
template <typename Number>
std::string base64Of(std::span<const Number> numbers) {
    std::vector<unsigned char> bytes;
    bytes.reserve(4 * numbers.size());
    for (const Number number : numbers) {
        const auto bits = std::bit_cast<std::uint32_t>(number);
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<unsigned char>(bits >> shift & 0xFFU));
    }
    return base64(bytes);
}

}  // namespace

Geometry encodeGeometry(std::span<const float> positions, std::span<const std::uint32_t> indices,
                        std::span<const std::uint32_t> faces) {
    return {base64Of(positions), base64Of(indices), base64Of(faces)};
}

}  // namespace results
