#pragma once

#include <vector>

#include <corvane/host/QORResultSet.h>

#include "results/Result.h"

/// Takes what one rule finds as values of the results. A finding without fingerprint gets one;
/// numbers that are not finite, and places that have such numbers, are left out.
class FindingCollector : public QORResultSet {
public:
    explicit FindingCollector(const CStringW& ruleName) : ruleName_(ruleName) {}

    void AddFinding(const CStringW& text) override;
    void ReportFinding(const corvane::Finding& finding) override;

    /// Whether anything but notes was found.
    bool any() const { return any_; }
    std::vector<results::Finding> take() { return std::move(findings_); }

private:
    CStringW ruleName_;
    std::vector<results::Finding> findings_;
    bool any_ = false;
};
