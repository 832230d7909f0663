#pragma once

#include <cstddef>
#include <memory>

namespace scripthost {

/// The memory of one state. Its first blocks come out of one piece: the libraries alone take
/// hundreds of small ones, and to get and free each of them is a third of the time of a short
/// script. In that piece only the last block gives its place back, so there is little of it.
class Blocks {
public:
    Blocks();

    /// A block of `newSize` bytes, more than none, with the content of `block`, which has `oldSize`
    /// bytes; null for a new one. When it gives null, `block` is as it was. It never does for a
    /// block that gets smaller.
    void* resize(void* block, std::size_t oldSize, std::size_t newSize) noexcept;
    void free(void* block, std::size_t size) noexcept;

private:
    bool isFirst(const void* block) const noexcept;
    bool resizeInPlace(const void* block, std::size_t oldSize, std::size_t newSize) noexcept;
    void* take(std::size_t size) noexcept;

    std::unique_ptr<char[]> first_;
    std::size_t used_ = 0;
};

}  // namespace scripthost
