#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <lua.hpp>

#include "Blocks.h"

namespace scripthost {

/// What one script may use up, its engines in Lua included.
struct Budget {
    std::uint64_t instructions = 500'000'000;
    std::uint64_t seconds = 60;
    std::uint64_t megabytes = 128;

    /// The defaults, each replaced by its environment variable where that holds a whole number in
    /// range.
    static Budget fromEnvironment();

    std::uint64_t bytes() const { return megabytes << 20; }
};

enum class Limit { None, Instructions, Time, Memory };

/// Holds a script to its budget. Once a limit is reached it stays reached, and whatever the script
/// does next fails.
///
/// Instructions are counted in two ways. Work of the library takes its steps off the budget before
/// it is done. Instructions of Lua are not counted one by one: each millisecond in which the script
/// runs takes a fixed number of them.
class Limits {
public:
    explicit Limits(const Budget& budget);
    Limits(const Limits&) = delete;
    Limits& operator=(const Limits&) = delete;

    const Budget& budget() const { return budget_; }
    Limit reached() const { return reached_; }
    std::uint64_t memory() const { return memory_; }
    /// The script's line when the limit was reached, from 1; 0 when it is not known.
    int line() const { return line_; }

    lua_State* guard = nullptr;  ///< See Collector.h.
    /// Memory in use that starts the next collection: the hook is called once it is reached.
    void setCollectAt(std::uint64_t memory) noexcept;
    std::uint64_t collectAt() const { return collectAt_; }

    /// Names the state whose stack is the running one: the one that is interrupted, and where a
    /// fault has its line. Null when none runs.
    void setRunning(lua_State* lua) noexcept { running_.store(lua, std::memory_order_relaxed); }

    /// Takes steps off the budget, at least one. False when a limit is reached.
    bool spend(std::uint64_t steps) noexcept {
        if (steps > left_ || isDue_.load(std::memory_order_relaxed)) return look(steps);
        left_ -= steps;
        return true;
    }
    /// Looks at the clock at once.
    bool isInTime() noexcept;
    void reach(Limit limit) noexcept;

    /// Counts memory that the host keeps for the script. False when the limit is reached.
    bool hold(std::size_t bytes) noexcept;
    void giveBack(std::size_t bytes) noexcept { memory_ -= bytes; }

    /// Time counts between the two only.
    void startClock() noexcept;
    void stopClock() noexcept;

    /// Has the hook of the running state called at its next instruction. Another thread calls this
    /// every millisecond.
    void interrupt() noexcept;
    /// What the hook does: looks at the limits when a millisecond is over, and lets the state run
    /// on without a hook. False when a limit is reached.
    bool resume(lua_State* lua) noexcept;
    /// Has the hook of a state called at its next instruction, from the script's own thread.
    void arm(lua_State* lua) noexcept;
    /// Waits until an interruption that is under way is over.
    void settle() noexcept;

    /// The allocator of the script's state; `self` is the Limits.
    static void* allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize);

private:
    using Clock = std::chrono::steady_clock;

    class Exclusion;

    bool look(std::uint64_t steps) noexcept;
    void endSlice() noexcept;
    int lineNow() const noexcept;
    bool mayGrow(std::size_t bytes) noexcept;
    void askToCollect() noexcept;
    void release(void* block, std::size_t size) noexcept;

    const Budget budget_;
    Blocks blocks_;
    Limit reached_ = Limit::None;
    int line_ = 0;
    std::uint64_t left_;        ///< Steps; 0 once a limit is reached.
    std::uint64_t sliceStart_;  ///< What was left when this millisecond began.
    std::uint64_t memory_ = 0;
    std::uint64_t collectAt_ = UINT64_MAX;
    bool isCollectAsked_ = false;
    bool refused_ = false;  ///< The last request for memory was.
    int refusedLine_ = 0;
    int refusals_ = 0;
    Clock::duration timeLeft_;
    Clock::time_point deadline_ = Clock::time_point::max();

    std::atomic<lua_State*> running_{nullptr};
    std::atomic<bool> isDue_{false};  ///< A millisecond is over.
    /// Held while the hook is set, and while memory is given back.
    std::atomic_flag isArming_;
};

}  // namespace scripthost
