#include "Blocks.h"

#include <cstdlib>
#include <cstring>
#include <functional>

namespace scripthost {
namespace {

/// Room for the libraries and what the host adds to them, and for a script of a few lines.
constexpr std::size_t kFirst = 32'768;

constexpr std::size_t aligned(std::size_t size) {
    return (size + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
}
static_assert(aligned(kFirst) == kFirst);

}  // namespace

Blocks::Blocks() : first_(std::make_unique_for_overwrite<char[]>(kFirst)) {}

bool Blocks::isFirst(const void* block) const noexcept {
    const std::less<const void*> isBefore;
    return !isBefore(block, first_.get()) && isBefore(block, first_.get() + kFirst);
}

bool Blocks::resizeInPlace(const void* block, std::size_t oldSize, std::size_t newSize) noexcept {
    if (newSize <= aligned(oldSize)) return true;
    const auto start = static_cast<std::size_t>(static_cast<const char*>(block) - first_.get());
    const bool isLast = start + aligned(oldSize) == used_;
    if (!isLast || newSize > kFirst - start) return false;
    used_ = start + aligned(newSize);
    return true;
}

void* Blocks::take(std::size_t size) noexcept {
    if (size > kFirst - used_) return std::malloc(size);
    void* const block = first_.get() + used_;
    used_ += aligned(size);
    return block;
}

void* Blocks::resize(void* block, std::size_t oldSize, std::size_t newSize) noexcept {
    if (!block) return take(newSize);
    if (!isFirst(block)) return std::realloc(block, newSize);
    if (resizeInPlace(block, oldSize, newSize)) return block;
    void* const larger = take(newSize);
    if (larger) std::memcpy(larger, block, oldSize);
    return larger;
}

void Blocks::free(void* block, std::size_t size) noexcept {
    if (!isFirst(block)) {
        std::free(block);
        return;
    }
    const auto start = static_cast<std::size_t>(static_cast<char*>(block) - first_.get());
    if (start + aligned(size) == used_) used_ = start;
}

}  // namespace scripthost
