#pragma once

#include <corvane/dfx/Parameters.h>

namespace dfx {

/// A set of values with a status and an error code, both fixed when it is made. It has no parent.
class CORVANE_EXPORT Result : public Parameters<IResult> {
public:
    /// No values, with that status and error code.
    Result(const bool& status, const int& errorCode);
    Result(const Result&) = default;
    Result& operator=(const Result&) = default;
    ~Result() override;

    bool status() const override;    ///< As given when it was made.
    int errorCode() const override;  ///< As given when it was made.

private:
    int errorCode_;
    bool status_;
};

}  // namespace dfx
