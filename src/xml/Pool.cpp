#include "xml/Pool.h"

namespace corvane::xml {
namespace {

constexpr std::size_t kSmallestBlock = 1024;
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;

}  // namespace

void* Pool::allocateBlock(std::size_t size) {
    // A large text gets a block of its own size; what is left of the old block is given up.
    const std::size_t usual = std::clamp(room_ * 2, kSmallestBlock, kLargestBlock);
    const std::size_t room = std::max(size, usual);
    blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(room));
    room_ = room;
    offset_ = size;
    return blocks_.back().get();
}

}  // namespace corvane::xml
