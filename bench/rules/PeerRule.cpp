#include "PeerRule.h"

#include <charconv>
#include <filesystem>
#include <fstream>

namespace {

template <typename Number>
Number toNumber(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

int toInt(std::string_view text) {
    return toNumber<int>(text);
}

std::string fileBytes(const std::string& path) {
    std::string bytes(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary)
        .read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

void PeerRule::addValue(std::string_view text) {
    switch (parameters.back().number) {
        case 1:
            counts.push_back(toInt(text));
            break;
        case 2:
            thicknesses.push_back(toNumber<double>(text));
            break;
        case 3:
            flags.push_back(text != "0");
            break;
        case 4:
            materials.emplace_back(text);
            break;
        case 5:
            colours.push_back(toNumber<std::uint32_t>(text));
            break;
        default:
            break;
    }
}
