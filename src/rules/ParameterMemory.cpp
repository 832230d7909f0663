#include "rules/ParameterMemory.h"

#include <array>
#include <mutex>
#include <new>
#include <utility>

// A large rule file makes parameters by the hundred thousand, and drops them with their rules. The
// heap puts off joining small pieces until a large one ends, which would be after the last rule,
// when none of them is in the processor's cache any more; dropping would take three times as long.
namespace corvane::rules {
namespace {

// The memory of a sanitizer's own shows what is used after its end.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kInBlocks = false;
#elif defined(__has_feature)
constexpr bool kInBlocks = !__has_feature(address_sanitizer);
#else
constexpr bool kInBlocks = true;
#endif

struct Block;

struct Slot {
    Block* block;
    union {
        Slot* next;  // while it is free
        std::array<std::byte, kLargestParameter> content;
    };
};

// From this size on the heap joins pieces when a block ends.
constexpr std::size_t kLeastBlock = std::size_t{1} << 16;
constexpr std::size_t kSlotsOfBlock = kLeastBlock / sizeof(Slot) + 1;

struct Block {
    bool isFull() const { return used == kSlotsOfBlock; }

    Slot& take() {
        ++used;
        if (free) return *std::exchange(free, free->next);
        Slot& slot = slots[fresh++];
        slot.block = this;
        return slot;
    }
    void give(Slot& slot) {
        --used;
        slot.next = std::exchange(free, &slot);
    }

    Block* previous = nullptr;
    Block* next = nullptr;
    std::size_t used = 0;
    std::size_t fresh = 0;  // The slots from here on have never been taken.
    Slot* free = nullptr;
    Slot slots[kSlotsOfBlock];
};

// Those that are not full; no list holds the others. Nothing ends with the library's statics, since
// a host's may hold rules.
std::mutex mutex;
constinit Block* blocks = nullptr;

void insert(Block& block) {
    block.previous = nullptr;
    block.next = std::exchange(blocks, &block);
    if (block.next) block.next->previous = &block;
}

void remove(const Block& block) {
    (block.previous ? block.previous->next : blocks) = block.next;
    if (block.next) block.next->previous = block.previous;
}

}  // namespace

void* allocateParameter() {
    if constexpr (!kInBlocks) return ::operator new(kLargestParameter);
    const std::lock_guard lock(mutex);
    if (!blocks) insert(*new Block);
    Block& block = *blocks;
    Slot& slot = block.take();
    if (block.isFull()) remove(block);
    return &slot.content;
}

void freeParameter(void* place) noexcept {
    if constexpr (!kInBlocks) return ::operator delete(place);
    Slot& slot = *reinterpret_cast<Slot*>(static_cast<std::byte*>(place) - offsetof(Slot, content));
    Block& block = *slot.block;
    const std::lock_guard lock(mutex);
    if (block.isFull()) insert(block);
    block.give(slot);
    if (block.used > 0) return;
    remove(block);
    delete &block;
}

}  // namespace corvane::rules
