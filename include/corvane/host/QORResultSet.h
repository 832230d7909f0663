#pragma once

#include <corvane/text/CStringW.h>

/// What a compiled rule found. The library passes it through as a pointer; a host derives from it
/// and collects.
class QORResultSet {
public:
    virtual ~QORResultSet() = default;
    /// Records one finding against the part, in the user's words. A rule without findings has
    /// passed.
    virtual void AddFinding(const CStringW& text) = 0;
};
