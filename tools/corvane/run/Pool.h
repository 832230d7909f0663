#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "run/Protocol.h"
#include "run/WorkerProcess.h"

/// What becomes of the jobs of a pool, told on the thread of Pool::run.
class JobListener {
public:
    virtual ~JobListener() = default;
    /// The next job, or nothing when all are handed out.
    virtual std::optional<protocol::Job> next() = 0;
    virtual void begins(std::size_t part, std::size_t rule) = 0;
    virtual void judged(std::size_t part, std::size_t rule, results::RuleResult result) = 0;
    /// The worker did not live to judge it, for this reason.
    virtual void lost(std::size_t part, std::size_t rule, const results::Remark& reason) = 0;
    /// `surface` is there when the job asked for it and the part has one.
    virtual void done(std::size_t part, std::optional<results::Geometry> surface) = 0;
    /// Called now and then, often enough for a line of progress.
    virtual void tick() = 0;
};

/// A few workers that share jobs. A worker that crashes, exits, hangs or takes too much memory
/// loses the rule that it was at; another one goes on with the rest of the job.
class Pool {
public:
    struct Limits {
        unsigned workers = 1;
        std::chrono::duration<double> timeout{300};  ///< Of a rule.
        std::uint64_t memory = 0;                    ///< Bytes of a worker; 0: no limit.
    };

    Pool(const protocol::Setup& setup, Limits limits, JobListener& listener);
    ~Pool();

    /// Takes jobs until there are no more and all are done, or the user interrupts.
    void run();

    /// What a worker says of the database that it opened.
    const std::string& database() const { return database_; }

private:
    using Clock = std::chrono::steady_clock;

    struct Slot {
        std::unique_ptr<WorkerProcess> process;
        protocol::Job job;  ///< Without the rules that are judged or lost.
        bool isBusy = false;
        bool isAtRule = false;  ///< At the first rule of its job.
        Clock::time_point ruleStart;
        int failedStarts = 0;  ///< Workers in a row that ended before they began a rule.
    };

    static bool isNearItsEnd(const Slot& slot);
    void assign(Slot& slot);
    void begin(Slot& slot);
    void listen(Slot& slot);
    void take(Slot& slot, const protocol::Reply& reply);
    void checkLimits(Slot& slot);
    void replace(Slot& slot, const results::Remark& reason);
    void loseFirstRule(Slot& slot, const results::Remark& reason);

    std::string setup_;
    Limits limits_;
    JobListener& listener_;
    std::vector<Slot> slots_;
    std::string database_;
};
