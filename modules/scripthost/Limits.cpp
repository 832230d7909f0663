#include "Limits.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <corvane/platform/Environment.h>

#include "Collector.h"
#include "Run.h"

namespace scripthost {
namespace {

constexpr std::uint64_t kStepsBetweenLooks = 100;
/// Allocations between two looks at the clock, in bytes; small ones count as more than they are.
constexpr std::uint64_t kBytesBetweenLooks = 262'144;
constexpr std::uint64_t kCostOfAllocation = 256;
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

Limits::Limits(const Budget& budget)
    : budget_(budget), left_(std::chrono::seconds(budget.seconds)) {}

void Limits::startClock() noexcept {
    deadline_ = Clock::now() + left_;
}

void Limits::stopClock() noexcept {
    left_ = deadline_ - Clock::now();
    deadline_ = Clock::time_point::max();
}

void Limits::reach(Limit limit) noexcept {
    if (reached_ != Limit::None) return;
    reached_ = limit;
    line_ = limit == Limit::Memory ? refusedLine_ : lineNow();
}

int Limits::lineNow() const noexcept {
    return running ? scriptLine(running) : 0;
}

bool Limits::spend(std::uint64_t steps) noexcept {
    if (reached_ != Limit::None) return false;
    if (steps > budget_.instructions - steps_) {
        reach(Limit::Instructions);
        return false;
    }
    steps_ += steps;
    sinceLook_ += steps;
    return sinceLook_ < kStepsBetweenLooks || isInTime();
}

bool Limits::isInTime() noexcept {
    sinceLook_ = 0;
    if (Clock::now() > deadline_) reach(Limit::Time);
    return reached_ == Limit::None;
}

bool Limits::mayGrow(std::size_t bytes) noexcept {
    allocated_ += bytes + kCostOfAllocation;
    if (allocated_ > kBytesBetweenLooks) {
        allocated_ = 0;
        isInTime();
    }
    const bool over = reached_ != Limit::None;
    if (over && refusals_ < kRefusalsForAnError) {
        ++refusals_;
        return false;
    }
    const std::uint64_t most = (budget_.megabytes << 20) + (over ? kReserve : 0);
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
    const std::uint64_t most = budget_.megabytes << 20;
    if (bytes > most || memory_ > most - bytes) {
        refusedLine_ = lineNow();
        reach(Limit::Memory);
    }
    if (reached_ != Limit::None) return false;
    memory_ += bytes;
    return true;
}

void* Limits::allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& limits = *static_cast<Limits*>(self);
    // For a new block Lua gives the kind of the object in place of the size.
    const std::size_t size = block ? oldSize : 0;
    if (newSize == 0) {
        std::free(block);
        limits.memory_ -= size;
        return nullptr;
    }
    const bool allowed = newSize <= size || limits.mayGrow(newSize - size);
    void* result = allowed ? std::realloc(block, newSize) : nullptr;
    if (!result && newSize <= size) result = block;
    if (!result) {
        dropWeakKeys(limits.guard);  // a collection follows
        return nullptr;
    }
    limits.memory_ += newSize - size;
    return result;
}

}  // namespace scripthost
