#pragma once

#include <corvane/text/CStringW.h>

/// The CAD system as a compiled rule sees it. The library passes it through as a pointer and calls
/// nothing of it; a host such as the command line derives from it.
class QORICadSys {
public:
    virtual ~QORICadSys() = default;
    /// Full path of the part that is checked, or an empty text when there is none.
    virtual CStringW GetActivePartPath() const = 0;
};
