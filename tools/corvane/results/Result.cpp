#include "Result.h"

namespace results {

std::int64_t& Counts::of(Verdict verdict) {
    switch (verdict) {
        case Verdict::Passed:
            return passed;
        case Verdict::Failed:
            return failed;
        case Verdict::Error:
            return error;
        case Verdict::Waived:
            return waived;
        case Verdict::NotRun:
            break;
    }
    return notRun;
}

void Counts::add(const PartResult& part) {
    for (const RuleResult& rule : part.rules)
        ++of(rule.verdict);
}

}  // namespace results
