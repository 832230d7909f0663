#include "Limits.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

#include <corvane/platform/Environment.h>

#include "Collector.h"
#include "Run.h"

namespace scripthost {
namespace {

/// What a millisecond of running counts as: what an interpreter that counts each instruction gets
/// through in that time.
constexpr std::uint64_t kStepsInSlice = 200'000;
/// What unwinding may still use when the limit is reached. Without it each step of it would cost a
/// full collection.
constexpr std::uint64_t kReserve = 1'048'576;
/// Lua asks twice, once before and once after a collection, before it gives up.
constexpr int kRefusalsForAnError = 2;

std::uint64_t numberOr(std::uint64_t fallback, const char16_t* variable, std::uint64_t most) {
    const std::u16string text = corvane::GetEnvironmentText(variable);
    if (text.empty() || text.size() > 18) return fallback;
    std::uint64_t value = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9') return fallback;
        value = value * 10 + (unit - u'0');
    }
    return value >= 1 && value <= most ? value : fallback;
}

}  // namespace

Budget Budget::fromEnvironment() {
    Budget budget;
    budget.instructions =
        numberOr(budget.instructions, u"CORVANE_SCRIPT_MAX_INSTRUCTIONS", 1'000'000'000'000'000);
    budget.seconds = numberOr(budget.seconds, u"CORVANE_SCRIPT_MAX_SECONDS", 86'400);
    budget.megabytes = numberOr(budget.megabytes, u"CORVANE_SCRIPT_MAX_MEMORY_MB", 65'536);
    return budget;
}

/// Keeps the thread that interrupts and the script's own apart. Setting a hook walks over the
/// records of all running functions, so none of them may be given back meanwhile.
class Limits::Exclusion {
public:
    explicit Exclusion(std::atomic_flag& flag) noexcept : flag_(flag) {
        while (flag_.test_and_set(std::memory_order_acquire))
            std::this_thread::yield();
    }
    Exclusion(const Exclusion&) = delete;
    Exclusion& operator=(const Exclusion&) = delete;
    ~Exclusion() { flag_.clear(std::memory_order_release); }

private:
    std::atomic_flag& flag_;
};

Limits::Limits(const Budget& budget)
    : budget_(budget),
      left_(budget.instructions),
      sliceStart_(budget.instructions),
      timeLeft_(std::chrono::seconds(budget.seconds)) {}

void Limits::startClock() noexcept {
    deadline_ = Clock::now() + timeLeft_;
}

void Limits::stopClock() noexcept {
    timeLeft_ = deadline_ - Clock::now();
    deadline_ = Clock::time_point::max();
}

void Limits::reach(Limit limit) noexcept {
    if (reached_ != Limit::None) return;
    reached_ = limit;
    left_ = 0;
    line_ = limit == Limit::Memory ? refusedLine_ : lineNow();
}

int Limits::lineNow() const noexcept {
    lua_State* lua = running_.load(std::memory_order_relaxed);
    return lua ? scriptLine(lua) : 0;
}

bool Limits::look(std::uint64_t steps) noexcept {
    if (isDue_.exchange(false, std::memory_order_relaxed)) endSlice();
    if (reached_ != Limit::None) return false;
    if (steps > left_) {
        reach(Limit::Instructions);
        return false;
    }
    left_ -= steps;
    return true;
}

/// Counts the millisecond, less what the library has counted in it already.
void Limits::endSlice() noexcept {
    const std::uint64_t counted = sliceStart_ - left_;
    const std::uint64_t rest = counted < kStepsInSlice ? kStepsInSlice - counted : 0;
    if (!isInTime()) return;
    if (rest > left_) {
        reach(Limit::Instructions);
        return;
    }
    left_ -= rest;
    sliceStart_ = left_;
}

bool Limits::isInTime() noexcept {
    if (Clock::now() > deadline_) reach(Limit::Time);
    return reached_ == Limit::None;
}

void Limits::interrupt() noexcept {
    isDue_.store(true, std::memory_order_relaxed);
    // The script holds it for moments only; the next millisecond comes soon.
    if (isArming_.test_and_set(std::memory_order_acquire)) return;
    if (lua_State* lua = running_.load(std::memory_order_relaxed)) armHook(lua);
    isArming_.clear(std::memory_order_release);
}

bool Limits::resume(lua_State* lua) noexcept {
    {
        const Exclusion alone(isArming_);
        disarmHook(lua);
    }
    if (isDue_.exchange(false, std::memory_order_relaxed)) endSlice();
    return reached_ == Limit::None;
}

void Limits::arm(lua_State* lua) noexcept {
    const Exclusion alone(isArming_);
    armHook(lua);
}

void Limits::settle() noexcept {
    const Exclusion alone(isArming_);
}

void Limits::setCollectAt(std::uint64_t memory) noexcept {
    collectAt_ = memory;
    isCollectAsked_ = false;
}

void Limits::askToCollect() noexcept {
    lua_State* lua = running_.load(std::memory_order_relaxed);
    if (!lua || memory_ < collectAt_ || isCollectAsked_) return;
    isCollectAsked_ = true;
    arm(lua);
}

bool Limits::mayGrow(std::size_t bytes) noexcept {
    if (isDue_.load(std::memory_order_relaxed)) look(0);
    const bool over = reached_ != Limit::None;
    if (over && refusals_ < kRefusalsForAnError) {
        ++refusals_;
        return false;
    }
    const std::uint64_t most = budget_.bytes() + (over ? kReserve : 0);
    if (bytes <= most && memory_ <= most - bytes) {
        refused_ = false;
        return true;
    }
    refusedLine_ = lineNow();
    if (refused_) {
        reach(Limit::Memory);
        refusals_ = kRefusalsForAnError;
    }
    refused_ = true;
    return false;
}

bool Limits::hold(std::size_t bytes) noexcept {
    const std::uint64_t most = budget_.bytes();
    if (bytes > most || memory_ > most - bytes) {
        refusedLine_ = lineNow();
        reach(Limit::Memory);
    }
    if (reached_ != Limit::None) return false;
    memory_ += bytes;
    return true;
}

void Limits::release(void* block, std::size_t size) noexcept {
    // Of a state that does not run no record is looked at.
    std::optional<Exclusion> alone;
    if (running_.load(std::memory_order_relaxed)) alone.emplace(isArming_);
    blocks_.free(block, size);
}

void* Limits::allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& limits = *static_cast<Limits*>(self);
    // For a new block Lua gives the kind of the object in place of the size.
    const std::size_t size = block ? oldSize : 0;
    if (newSize == 0) {
        limits.release(block, size);
        limits.memory_ -= size;
        return nullptr;
    }
    const bool allowed = newSize <= size || limits.mayGrow(newSize - size);
    void* result = allowed ? limits.blocks_.resize(block, size, newSize) : nullptr;
    if (!result && newSize <= size) result = block;
    if (!result) {
        dropWeakKeys(limits.guard);  // a collection follows
        return nullptr;
    }
    limits.memory_ += newSize - size;
    limits.askToCollect();
    return result;
}

}  // namespace scripthost
