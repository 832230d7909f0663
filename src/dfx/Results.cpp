#include <corvane/dfx/Criteria.h>
#include <corvane/dfx/Result.h>

namespace dfx {

IParameters::~IParameters() = default;
IResult::~IResult() = default;
Criteria::Criteria() = default;
Criteria::Criteria(const Criteria& source) = default;
Criteria& Criteria::operator=(const Criteria& source) = default;
Criteria::~Criteria() = default;
Result::~Result() = default;

Result::Result(const bool& status, const int& errorCode) : errorCode_(errorCode), status_(status) {}

bool Result::status() const {
    return status_;
}

int Result::errorCode() const {
    return errorCode_;
}

}  // namespace dfx
