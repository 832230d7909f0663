#pragma once

#include <corvane/host/Finding.h>
#include <corvane/text/CStringW.h>

/// What a rule found. The library passes it through as a pointer; a host derives from it and
/// collects. A rule without findings, notes apart, has passed.
class QORResultSet {
public:
    virtual ~QORResultSet() = default;
    /// Records one finding against the part, in the user's words.
    virtual void AddFinding(const CStringW& text) = 0;
    /// Records a finding with all that is known of it. A result set that keeps texts alone takes
    /// its message, and drops notes.
    virtual void ReportFinding(const corvane::Finding& finding) {
        if (!finding.isNote) AddFinding(finding.message);
    }
};
