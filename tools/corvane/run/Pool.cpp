#include "run/Pool.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <thread>

#include "Signals.h"
#include "language/Messages.h"

namespace {

using protocol::Reply;

/// How often limits are looked at and progress is told.
constexpr std::chrono::milliseconds kTick(50);
/// While each worker has more rules to go than these, what they write is collected for as long: to
/// be woken for each line takes as much time as a small rule.
constexpr std::size_t kManyRules = 100;
constexpr std::chrono::milliseconds kCollecting(1);
/// A worker that cannot even begin is given up after as many tries.
constexpr int kMostFailedStarts = 3;

std::string rounded(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

}  // namespace

bool Pool::isNearItsEnd(const Slot& slot) {
    return slot.isBusy && slot.job.rules.size() <= kManyRules;
}

Pool::Pool(const protocol::Setup& setup, Limits limits, JobListener& listener)
    : setup_(lineOf(setup)), limits_(limits), listener_(listener) {}

Pool::~Pool() = default;

void Pool::run() {
    slots_.resize(std::max(limits_.workers, 1U));
    Clock::time_point nextTick = Clock::now();
    while (!wasInterrupted()) {
        for (Slot& slot : slots_)
            if (!slot.isBusy) assign(slot);
        std::vector<WorkerProcess*> busy;
        for (const Slot& slot : slots_)
            if (slot.isBusy) busy.push_back(slot.process.get());
        if (busy.empty()) break;
        WorkerProcess::wait(busy, kTick.count());
        if (std::ranges::none_of(slots_, isNearItsEnd)) std::this_thread::sleep_for(kCollecting);
        for (Slot& slot : slots_)
            if (slot.isBusy) listen(slot);
        if (Clock::now() < nextTick) continue;
        nextTick = Clock::now() + kTick;
        for (Slot& slot : slots_)
            if (slot.isBusy) checkLimits(slot);
        listener_.tick();
    }
    slots_.clear();
}

void Pool::assign(Slot& slot) {
    while (!slot.isBusy) {
        std::optional<protocol::Job> job = listener_.next();
        if (!job) return;
        slot.job = std::move(*job);
        begin(slot);
    }
}

/// Gives the slot's worker what is left of the job; a job without rules left is done.
void Pool::begin(Slot& slot) {
    slot.isBusy = false;
    slot.isAtRule = false;
    while (!slot.job.rules.empty() || slot.job.wantsSurface) {
        if (!slot.process) {
            slot.process = WorkerProcess::start("worker");
            if (slot.process) slot.process->send(setup_);
        }
        if (slot.process) {
            slot.process->send(lineOf(slot.job));
            slot.isBusy = true;
            slot.ruleStart = Clock::now();
            return;
        }
        loseFirstRule(slot, remark("no process can be started for it"));
    }
    listener_.done(slot.job.part, {});
}

void Pool::listen(Slot& slot) {
    std::vector<std::string> lines;
    const bool open = slot.process->receive(lines);
    for (const std::string& line : lines) {
        try {
            take(slot, protocol::replyFrom(line));
        } catch (const nlohmann::json::exception&) {
            // Whatever wrote that into the line, this worker is not to be trusted any more.
            replace(slot, remark("its process wrote what is no result"));
            return;
        }
    }
    if (open) return;
    const std::string how = slot.process->awaitEnd();
    // A worker that ends after its work is only replaced by the next job's.
    if (slot.isBusy)
        replace(slot, remark("the rule ended its process ({0})", how));
    else
        slot.process.reset();
}

void Pool::take(Slot& slot, const Reply& reply) {
    const bool isExpected = slot.isBusy && reply.part == slot.job.part;
    if (!isExpected) return;
    if (reply.kind == Reply::Kind::Done) {
        if (!reply.database.empty()) database_ = reply.database;
        slot.isBusy = false;
        listener_.done(slot.job.part, reply.surface);
        return;
    }
    if (slot.job.rules.empty() || reply.rule != slot.job.rules.front()) return;
    slot.failedStarts = 0;
    if (reply.kind == Reply::Kind::Begins) {
        slot.isAtRule = true;
        slot.ruleStart = Clock::now();
        listener_.begins(reply.part, reply.rule);
        return;
    }
    slot.isAtRule = false;
    slot.ruleStart = Clock::now();
    slot.job.rules.pop_front();
    listener_.judged(reply.part, reply.rule, reply.result);
}

void Pool::checkLimits(Slot& slot) {
    if (Clock::now() - slot.ruleStart > limits_.timeout)
        replace(slot, remark("the rule took longer than {0} s", rounded(limits_.timeout.count())));
    else if (limits_.memory > 0 && slot.process->memory() > limits_.memory)
        replace(slot, remark("the rule took more than {0} MB of memory", limits_.memory >> 20));
}

/// Ends the worker, which loses the rule that it was at, and gives the rest to a new one.
void Pool::replace(Slot& slot, const results::Remark& reason) {
    slot.process.reset();
    // Without a rule left it was at the surface.
    if (slot.isAtRule || slot.job.rules.empty() || ++slot.failedStarts >= kMostFailedStarts) {
        slot.failedStarts = 0;
        loseFirstRule(slot, reason);
    }
    begin(slot);
}

void Pool::loseFirstRule(Slot& slot, const results::Remark& reason) {
    if (slot.job.rules.empty()) {
        slot.job.wantsSurface = false;
        return;
    }
    listener_.lost(slot.job.part, slot.job.rules.front(), reason);
    slot.job.rules.pop_front();
}
