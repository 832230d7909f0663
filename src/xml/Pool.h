#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvane::xml {

class Node;
class Pool;

/// A name that is kept once for all nodes that have it, as written. Its units follow it in memory.
class Name {
public:
    std::u16string_view view() const {
        return {reinterpret_cast<const char16_t*>(this + 1), size_};
    }
    /// Compared as bytes, where a view compares unit by unit.
    bool is(std::u16string_view text) const {
        const std::u16string_view own = view();
        return std::equal(own.begin(), own.end(), text.begin(), text.end());
    }
    std::u16string_view prefix() const { return view().substr(0, prefix_); }
    std::u16string_view local() const {
        return prefix_ == 0 ? view() : view().substr(prefix_ + std::size_t{1});
    }

    Pool* pool() const { return pool_; }  ///< Where the name lies; null for the heap.

    static const Name* makeIn(Pool& pool, std::u16string_view text);
    /// A name on the heap, which `drop` ends.
    static const Name* make(std::u16string_view text);
    static void drop(const Name* name) noexcept;

private:
    Name(Pool* pool, std::u16string_view text);
    static std::size_t sizeFor(std::u16string_view text) {
        return sizeof(Name) + text.size() * sizeof(char16_t);
    }

    Pool* pool_;
    std::uint32_t size_;
    std::uint32_t prefix_;  // The units before the colon; 0 when there is none.
};

struct NameDrop {
    void operator()(const Name* name) const { Name::drop(name); }
};

/// The memory of nodes that are made together, by a load, a copy or a writer. It goes when the last
/// element in it is gone. A tree that has stayed as it was made goes with its pool in one step, so
/// that making and dropping a large tree asks the heap for little.
class Pool {
public:
    Pool() = default;
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    void* allocate(std::size_t size, std::size_t alignment) {
        const auto at = reinterpret_cast<std::uintptr_t>(next_);
        const std::size_t padding = (alignment - at % alignment) % alignment;
        if (size + padding > room_) return allocateBlock(size);
        void* place = next_ + padding;
        next_ += size + padding;
        room_ -= size + padding;
        return place;
    }

    /// A copy of the text in this memory.
    const char16_t* copy(std::u16string_view text);
    /// The same for UTF-8, as system::appendFromUtf8 decodes it.
    std::u16string_view copyUtf8(std::string_view utf8);
    /// The name in this memory. Names that come again soon are found again.
    const Name* name(std::u16string_view text);

    /// One more element, or user, and one fewer.
    void hold() { ++users_; }
    void release() {
        if (--users_ == 0) delete this;
    }

    /// From here on all of this memory is the tree below `top`, and all of that is in this memory,
    /// unless that has ended already by a change.
    void seal(const Node* top) {
        if (!changed_) top_ = top;
    }
    void unseal() {
        changed_ = true;
        top_ = nullptr;
    }
    bool isWhole(const Node* top) const { return top_ == top; }
    /// Ends the pool with all that is in it.
    void dropWhole() { delete this; }

private:
    struct Block {
        Block* next;
    };

    ~Pool();
    void* allocateBlock(std::size_t size);

    Block* blocks_ = nullptr;
    std::byte* next_ = nullptr;
    std::size_t room_ = 0;
    std::size_t blockSize_ = 0;
    std::size_t users_ = 0;
    const Node* top_ = nullptr;
    bool changed_ = false;
    std::array<const Name*, 32> recentNames_{};
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
