#pragma once

#include <corvane/dfx/Parameters.h>

namespace dfx {

/// The set of values that says what an operator is to look for. It has no parent, and is otherwise
/// a set like any other.
class CORVANE_EXPORT Criteria : public Parameters<IParameters> {
public:
    Criteria();
    Criteria(const Criteria& source);
    Criteria& operator=(const Criteria& source);
    ~Criteria() override;
};

}  // namespace dfx
