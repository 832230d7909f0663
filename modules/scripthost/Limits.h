#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <lua.hpp>

namespace scripthost {

/// What one script may use up, its engines in Lua included.
struct Budget {
    std::uint64_t instructions = 500'000'000;
    std::uint64_t seconds = 60;
    std::uint64_t megabytes = 128;

    /// The defaults, each replaced by its environment variable where that holds a whole number in
    /// range.
    static Budget fromEnvironment();
};

enum class Limit { None, Instructions, Time, Memory };

/// Holds a script to its budget. Once a limit is reached it stays reached, and whatever the script
/// does next fails.
class Limits {
public:
    explicit Limits(const Budget& budget);
    Limits(const Limits&) = delete;
    Limits& operator=(const Limits&) = delete;

    const Budget& budget() const { return budget_; }
    Limit reached() const { return reached_; }

    /// The state whose stack is the running one, so that a fault found outside it has a place.
    lua_State* running = nullptr;
    lua_State* guard = nullptr;   ///< See Collector.h.
    std::uint64_t collectAt = 0;  ///< Memory in use that starts the next collection.
    std::uint64_t memory() const { return memory_; }
    /// The script's line when the limit was reached, from 1; 0 when it is not known.
    int line() const { return line_; }

    /// Takes steps off the budget and looks at the clock now and then. False when a limit is
    /// reached.
    bool spend(std::uint64_t steps) noexcept;
    /// Looks at the clock at once.
    bool isInTime() noexcept;
    void reach(Limit limit) noexcept;

    /// Counts memory that the host keeps for the script. False when the limit is reached.
    bool hold(std::size_t bytes) noexcept;
    void giveBack(std::size_t bytes) noexcept { memory_ -= bytes; }

    /// Time counts between the two only.
    void startClock() noexcept;
    void stopClock() noexcept;

    /// The allocator of the script's state; `self` is the Limits.
    static void* allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize);

private:
    using Clock = std::chrono::steady_clock;

    int lineNow() const noexcept;
    bool mayGrow(std::size_t bytes) noexcept;

    const Budget budget_;
    Limit reached_ = Limit::None;
    int line_ = 0;
    std::uint64_t steps_ = 0;
    std::uint64_t memory_ = 0;
    std::uint64_t sinceLook_ = 0;  ///< Steps since the last look at the clock.
    std::uint64_t allocated_ = 0;  ///< Bytes since the last look that an allocation caused.
    bool refused_ = false;         ///< The last request for memory was.
    int refusedLine_ = 0;
    int refusals_ = 0;
    Clock::duration left_;
    Clock::time_point deadline_ = Clock::time_point::max();
};

}  // namespace scripthost
