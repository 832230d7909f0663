#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <corvane/platform/Unknown.h>

namespace {

// The length in bytes is right before the text. The block has more room there, so that the text
// is aligned like the block.
constexpr std::size_t kPrefix = alignof(std::max_align_t);
constexpr std::size_t kMostBytes = 0x7FFFFFFF;

std::byte* lengthOf(BSTR text) {
    return reinterpret_cast<std::byte*>(text) - sizeof(std::uint32_t);
}

}  // namespace

BSTR SysAllocString(const char16_t* text) {
    if (!text) return nullptr;
    const std::size_t bytes = std::u16string_view(text).size() * sizeof(char16_t);
    if (bytes > kMostBytes) return nullptr;
    auto* block = static_cast<std::byte*>(std::malloc(kPrefix + bytes + sizeof(char16_t)));
    if (!block) return nullptr;
    const BSTR copy = reinterpret_cast<BSTR>(block + kPrefix);
    const auto length = static_cast<std::uint32_t>(bytes);
    std::memcpy(lengthOf(copy), &length, sizeof length);
    std::memcpy(copy, text, bytes + sizeof(char16_t));
    return copy;
}

void SysFreeString(BSTR text) {
    if (text) std::free(reinterpret_cast<std::byte*>(text) - kPrefix);
}

std::uint32_t SysStringLen(BSTR text) {
    if (!text) return 0;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, lengthOf(text), sizeof bytes);
    return bytes / static_cast<std::uint32_t>(sizeof(char16_t));
}
