#include "xml/Pool.h"

#include <algorithm>
#include <new>
#include <string>

#include "system/Unicode.h"

namespace corvane::xml {
namespace {

constexpr std::size_t kSmallestBlock = 2048;
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;
constexpr std::size_t kAlignment = alignof(std::max_align_t);

}  // namespace

Name::Name(Pool* pool, std::u16string_view text)
    : pool_(pool),
      size_(static_cast<std::uint32_t>(text.size())),
      prefix_(static_cast<std::uint32_t>(std::min(text.find(u':') + 1, text.size()))) {
    // npos plus one is 0.
    if (prefix_ > 0) --prefix_;
    std::copy(text.begin(), text.end(), reinterpret_cast<char16_t*>(this + 1));
}

const Name* Name::makeIn(Pool& pool, std::u16string_view text) {
    return new (pool.allocate(sizeFor(text), alignof(Name))) Name(&pool, text);
}

const Name* Name::make(std::u16string_view text) {
    return new (::operator new(sizeFor(text))) Name(nullptr, text);
}

void Name::drop(const Name* name) noexcept {
    ::operator delete(const_cast<Name*>(name));
}

const char16_t* Pool::copy(std::u16string_view text) {
    if (text.empty()) return nullptr;
    auto* units =
        static_cast<char16_t*>(allocate(text.size() * sizeof(char16_t), alignof(char16_t)));
    std::copy(text.begin(), text.end(), units);
    return units;
}

std::u16string_view Pool::copyUtf8(std::string_view utf8) {
    if (utf8.empty()) return {};
    // No byte stands for more than a unit.
    auto* units =
        static_cast<char16_t*>(allocate(utf8.size() * sizeof(char16_t), alignof(char16_t)));
    unsigned char bits = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        bits |= byte;
        units[i] = byte;
    }
    if (bits < 0x80) return {units, utf8.size()};
    const std::u16string text = system::fromUtf8(utf8);
    std::copy(text.begin(), text.end(), units);
    return {units, text.size()};
}

const Name* Pool::name(std::u16string_view text) {
    const std::size_t first = text.front();
    const std::size_t last = text.back();
    // These factors spread the names of rule files best.
    const std::size_t hash = 5 * text.size() + 11 * first + 3 * last;
    const Name*& recent = recentNames_[hash % recentNames_.size()];
    if (!recent || !recent->is(text)) recent = Name::makeIn(*this, text);
    return recent;
}

void* Pool::allocateBlock(std::size_t size) {
    // What is left of the old block is given up, unless the new one is only for a large text.
    constexpr std::size_t kHeader = std::max(sizeof(Block), kAlignment);
    // Growth by half leaves a small tree, of which a writer makes one for each rule, little unused.
    const std::size_t usual =
        std::clamp(blockSize_ + blockSize_ / 2, kSmallestBlock, kLargestBlock);
    const bool isLarge = size > usual / 2;
    const std::size_t room = isLarge ? size : usual - kHeader;
    auto* block = static_cast<Block*>(::operator new(kHeader + room));
    block->next = blocks_;
    blocks_ = block;
    auto* place = reinterpret_cast<std::byte*>(block) + kHeader;
    if (isLarge) return place;
    blockSize_ = usual;
    next_ = place + size;
    room_ = room - size;
    return place;
}

Pool::~Pool() {
    while (Block* block = blocks_) {
        blocks_ = block->next;
        ::operator delete(block);
    }
}

}  // namespace corvane::xml
