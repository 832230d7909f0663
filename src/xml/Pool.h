#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace corvane::xml {

/// The memory of nodes that are made together, by a load or a copy. It goes as a whole when the
/// last of them is gone, so that making and dropping a large tree asks the heap for little.
class Pool {
public:
    void* allocate(std::size_t size, std::size_t alignment) {
        const std::size_t padding = (alignment - offset_ % alignment) % alignment;
        if (padding + size > room_ - offset_) return allocateBlock(size);
        offset_ += padding + size;
        return blocks_.back().get() + offset_ - size;
    }

    /// A copy of the text in this memory.
    std::u16string_view copy(std::u16string_view text) {
        if (text.empty()) return {};
        auto* units =
            static_cast<char16_t*>(allocate(text.size() * sizeof(char16_t), alignof(char16_t)));
        std::copy(text.begin(), text.end(), units);
        return {units, text.size()};
    }

    void hold() { ++users_; }
    void release() {
        if (--users_ == 0) delete this;
    }

private:
    ~Pool() = default;  // Only the last user ends a pool.
    void* allocateBlock(std::size_t size);

    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::size_t room_ = 0;
    std::size_t offset_ = 0;
    std::size_t users_ = 0;
};

/// One use of a pool for as long as something is being made in it.
class PoolUse {
public:
    PoolUse() : pool_(new Pool) { pool_->hold(); }
    ~PoolUse() { pool_->release(); }
    PoolUse(const PoolUse&) = delete;
    PoolUse& operator=(const PoolUse&) = delete;

    Pool* get() const { return pool_; }

private:
    Pool* pool_;
};

}  // namespace corvane::xml
