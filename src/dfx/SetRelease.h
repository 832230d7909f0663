#pragma once

#include <memory>
#include <set>

#include <corvane/dfx/IParameters.h>

namespace dfx {

/// Gives up the parent of a set that ends. When that ends the parent too, and its parents behind
/// it, they end one after the other from the last to the first, without a call for each: a chain
/// may be longer than the stack is deep.
///
/// A set that ends within such a chain hands over its values with its parent, so that they outlive
/// the values of its parents.
void releaseParent(const IParameters* set, std::shared_ptr<IParameters> parent,
                   std::set<std::shared_ptr<IValue>, IsValueLessThan>& values) noexcept;

}  // namespace dfx
