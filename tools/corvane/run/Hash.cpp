#include "run/Hash.h"

#include <array>
#include <fstream>
#include <nettle/sha2.h>
#include <vector>

namespace {

class Sha256 {
public:
    Sha256() { sha256_init(&context_); }
    void add(std::string_view bytes) {
        sha256_update(&context_, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    }
    std::string hex() {
        std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
        sha256_digest(&context_, digest.size(), digest.data());
        constexpr char kDigits[] = "0123456789abcdef";
        std::string text;
        for (const std::uint8_t byte : digest) {
            text += kDigits[byte >> 4];
            text += kDigits[byte & 15];
        }
        return text;
    }

private:
    sha256_ctx context_;
};

}  // namespace

std::string hashOf(std::string_view bytes) {
    Sha256 hash;
    hash.add(bytes);
    return hash.hex();
}

std::optional<FileHash> hashFile(const std::filesystem::path& path) {
    std::error_code status;
    // Reading a folder fails only later, and a pipe might never end.
    if (!std::filesystem::is_regular_file(path, status)) return {};
    std::ifstream file(path, std::ios::binary);
    if (!file) return {};
    Sha256 hash;
    FileHash result;
    std::vector<char> block(1 << 16);
    while (file) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto count = static_cast<std::size_t>(file.gcount());
        hash.add({block.data(), count});
        result.size += count;
    }
    if (!file.eof()) return {};
    result.sha256 = hash.hex();
    return result;
}

const std::string& FileHashes::of(const std::filesystem::path& path) {
    const auto [entry, isNew] = known_.try_emplace(path);
    if (isNew) {
        if (const std::optional<FileHash> hash = hashFile(path)) entry->second = hash->sha256;
    }
    return entry->second;
}
