#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "Console.h"
#include "results/Outputs.h"
#include "run/Cache.h"
#include "run/Gate.h"
#include "run/Plan.h"
#include "run/Pool.h"
#include "run/Waivers.h"

/// Takes a plan to its end: hands jobs to workers, brings what they judge into the order of the
/// plan, and writes it. It loads no rule module, no engine and no script itself.
class Run : public JobListener {
public:
    /// What decides how findings count; both may be missing.
    struct Judgement {
        std::optional<Waivers> waivers;
        std::optional<Baseline> baseline;
    };

    Run(const Plan& plan, const RunOptions& options, Judgement judgement, Gate& gate,
        results::Outputs& outputs, Console& console);

    void execute(const Severities& severities);

private:
    struct PartState {
        results::PartResult result;
        std::vector<bool> isKnown;  ///< By the places in Plan::rules.
        std::string identity;       ///< For the cache.
        bool isDone = false;
    };
    struct Step {
        std::size_t part, rule;
    };

    std::optional<protocol::Job> next() override;
    void begins(std::size_t part, std::size_t rule) override;
    void judged(std::size_t part, std::size_t rule, results::RuleResult result) override;
    void lost(std::size_t part, std::size_t rule, const results::Remark& reason) override;
    void done(std::size_t part, std::optional<results::Geometry> surface) override;
    void tick() override;

    results::RunInfo info(const Severities& severities) const;
    void startPart(std::size_t number);
    void takeFromCache(PartState& part);
    std::string cacheKey(const PartState& part, std::size_t rule) const;
    void prepareCache();
    void put(PartState& part, std::size_t rule, results::RuleResult result);
    void emitFinished();
    void emit(PartState& part);
    void emitInterrupted();
    void finish();
    std::size_t rulesBegun() const;
    CStringW stepText() const;

    const Plan& plan_;
    const RunOptions& options_;
    Judgement judgement_;
    Gate& gate_;
    results::Outputs& outputs_;
    Console& console_;
    std::optional<Cache> cache_;
    std::string commonIdentity_;
    std::vector<std::unique_ptr<PartState>> parts_;  ///< Null before and after its time.
    std::size_t nextPart_ = 0;
    std::size_t emitted_ = 0;
    results::RunEnd end_;
    std::vector<results::Remark> notices_;
    std::optional<Step> step_;  ///< What is going on now.
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};
