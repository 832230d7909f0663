#include "run/Gate.h"

#include "Command.h"

using results::Verdict;

void Gate::add(const results::PartResult& part) {
    for (const results::RuleResult& rule : part.rules) {
        if (failOn_ && !severities_.isAtLeast(rule.severity.number, *failOn_)) continue;
        failed_ = failed_ || rule.verdict == Verdict::Failed;
        undecided_ =
            undecided_ || rule.verdict == Verdict::Error || rule.verdict == Verdict::NotRun;
    }
}

int Gate::status() const {
    if (failed_) return kWrong;
    return undecided_ ? kUndecided : kGood;
}
