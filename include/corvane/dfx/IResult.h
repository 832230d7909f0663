#pragma once

#include <corvane/dfx/IParameters.h>

namespace dfx {

/// What an operator hands back: a set of values with a status and an error code, whose meaning
/// the module of the operator defines. Result is its implementation.
class CORVANE_EXPORT IResult : public IParameters {
public:
    IResult() = default;
    IResult(const IResult&) = default;
    IResult& operator=(const IResult&) = default;
    ~IResult() override;

    virtual bool status() const = 0;    ///< Whether the operator succeeded.
    virtual int errorCode() const = 0;  ///< What failed.
};

}  // namespace dfx
