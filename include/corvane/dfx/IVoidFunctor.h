#pragma once

#include <corvane/base/Export.h>

namespace dfx {

/// A piece of work that one module hands to another as a value of number 23. It takes nothing and
/// gives nothing back: what it needs it holds itself. The library calls none.
class CORVANE_EXPORT IVoidFunctor {
public:
    IVoidFunctor() = default;
    IVoidFunctor(const IVoidFunctor&) = default;
    IVoidFunctor& operator=(const IVoidFunctor&) = default;
    virtual ~IVoidFunctor();

    /// Does the work, on the caller's thread. The module that makes it says whether
    /// it may run more than once.
    virtual void operator()() = 0;
};

}  // namespace dfx
