#pragma once

#include <cstdint>

namespace corvane::part::walls {

/// Thins the samples of a part that no tree of boxes can sort, such as a fan of a million slivers,
/// so that it takes seconds and not hours. Work is counted, not timed: the same part gives the same
/// samples.
class Pace {
public:
    /// Grows with what is looked at.
    std::uint64_t work = 0;

    /// Whether the next sample is to be measured.
    bool isDue() {
        if (work > allowed_) {
            allowed_ = work + kAllowance;
            step_ *= 4;
        }
        return count_++ % step_ == 0;
    }

    /// Whether the work so far is what thins samples.
    [[nodiscard]] bool isTired() const { return work > kAllowance; }

private:
    /// Several times what an ordinary part with a million facets needs.
    static constexpr std::uint64_t kAllowance = 200'000'000;
    std::uint64_t allowed_ = kAllowance, step_ = 1, count_ = 0;
};

}  // namespace corvane::part::walls
