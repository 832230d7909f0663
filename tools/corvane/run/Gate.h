#pragma once

#include "run/Severities.h"

/// What a run's results mean for its exit status.
class Gate {
public:
    /// Rules below the severity `failOn` are shown and fail nothing.
    Gate(Severities severities, std::optional<std::int64_t> failOn)
        : severities_(std::move(severities)), failOn_(failOn) {}

    void add(const results::PartResult& part);
    void addInterruption() { undecided_ = true; }

    /// kGood, kWrong when a rule failed, or kUndecided when none failed but one could not judge.
    int status() const;

private:
    Severities severities_;
    std::optional<std::int64_t> failOn_;
    bool failed_ = false;
    bool undecided_ = false;
};
