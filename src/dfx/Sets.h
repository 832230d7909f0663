#pragma once

#include <memory>
#include <set>
#include <utility>

#include <corvane/dfx/IParameters.h>
#include <corvane/dfx/ISchema.h>
#include <corvane/dfx/IValue.h>

namespace dfx {

inline int numberOf(const IValue& value) {
    return value.key();
}

inline short numberOf(const ISchema& schema) {
    return schema.type();
}

/// Where a number stands in an ordered set of handles, or belongs.
template <typename Set, typename Number>
struct Place {
    Place(const Set& set, Number number)
        : at(set.lower_bound([this, number](const auto& handle) {
              // A set searches on below a match, where all is less. Asking is what a search costs.
              if (taken) return true;
              const Number own = numberOf(*handle);
              taken = own == number;
              return own < number;
          })) {}

    bool taken = false;
    typename Set::const_iterator at;
};

/// Puts a handle into an ordered set of handles, in place of the one that has its number. It
/// descends once. A replacement needs no memory, and the replaced handle ends only after it.
template <typename Set>
void insertOrReplace(Set& set, typename Set::value_type handle) {
    const Place place(set, numberOf(*handle));
    if (place.taken) {
        // The set hands out constant elements to protect its order, which an equal number keeps.
        const_cast<typename Set::value_type&>(*place.at).swap(handle);
    } else {
        set.insert(place.at, std::move(handle));
    }
}

/// Gives up the parent of a set that ends. When that ends the parent too, and the parents above
/// it, they end one after the other from the last to the first, without a call for each: a chain
/// may be longer than the stack is deep.
///
/// A set that ends within such a chain hands over its values with its parent, so that they outlive
/// the values of its parents.
void releaseParent(const IParameters* set, std::shared_ptr<IParameters> parent,
                   std::set<std::shared_ptr<IValue>, IsValueLessThan>& values) noexcept;

}  // namespace dfx
