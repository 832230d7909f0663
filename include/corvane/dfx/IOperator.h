#pragma once

#include <memory>

#include <corvane/dfx/IParameters.h>
#include <corvane/dfx/IResult.h>

namespace dfx {

/// A unit of work that a module offers to others. The library calls none.
class CORVANE_EXPORT IOperator {
public:
    IOperator() = default;
    IOperator(const IOperator&) = default;
    IOperator& operator=(const IOperator&) = default;
    virtual ~IOperator();

    /// Works on `parameters` and hands back a result, which may be `result`, filled, or another
    /// one: the caller goes by the handle that it gets. An empty handle means that there is no
    /// result. The body gives up its arguments and hands back an empty handle.
    virtual std::shared_ptr<IResult> execute(std::shared_ptr<IParameters> parameters,
                                             std::shared_ptr<IResult> result) = 0;
};

}  // namespace dfx
