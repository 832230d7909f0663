#pragma once

#include <utility>

namespace dfx {

/// Puts a handle into an ordered set of handles, in place of the one that has its number. It
/// descends once. A replacement needs no memory, and the replaced handle ends only after it.
template <typename Set, typename Number>
void insertOrReplace(Set& set, Number number, typename Set::value_type handle) {
    const auto place = set.lower_bound(number);
    if (place == set.end() || set.key_comp()(number, *place)) {
        set.insert(place, std::move(handle));
    } else {
        // The set hands out constant elements to protect its order, which an equal number keeps.
        const_cast<typename Set::value_type&>(*place).swap(handle);
    }
}

/// The handle with that number, or an empty one.
template <typename Set, typename Number>
typename Set::value_type handleOf(const Set& set, Number number) {
    const auto found = set.find(number);
    return found == set.end() ? nullptr : *found;
}

}  // namespace dfx
