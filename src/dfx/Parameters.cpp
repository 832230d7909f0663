#include <type_traits>
#include <typeinfo>
#include <utility>

#include <corvane/dfx/Criteria.h>
#include <corvane/dfx/Parameters.h>
#include <corvane/dfx/Result.h>

#include "dfx/HandleSet.h"
#include "dfx/SetRelease.h"

namespace dfx {
namespace {

// The parent as a set that answers look-ups by the code of this file, or null. A class of a module
// may do so too, but only its virtual operation knows.
template <typename I>
const Parameters<I>* plainSet(const I& parent) {
    const std::type_info& type = typeid(parent);
    bool plain = false;
    if constexpr (std::is_same_v<I, IResult>)
        plain = type == typeid(Result);
    else
        plain = type == typeid(Parameters<IParameters>) || type == typeid(Criteria);
    return plain ? static_cast<const Parameters<I>*>(&parent) : nullptr;
}

}  // namespace

template <typename I>
Parameters<I>::Parameters() = default;

template <typename I>
Parameters<I>::Parameters(std::shared_ptr<I> parent) : parent_(std::move(parent)) {}

template <typename I>
Parameters<I>::Parameters(const Parameters& source) = default;

template <typename I>
Parameters<I>::~Parameters() {
    releaseParent(this, std::move(parent_), values_);
}

template <typename I>
Parameters<I>& Parameters<I>::operator=(const Parameters& source) {
    if (this == &source) return *this;
    // What the target holds ends last: it may be all that keeps the source alive.
    auto values = source.values_;
    auto parent = source.parent_;
    values_.swap(values);
    parent_.swap(parent);
    return *this;
}

// A loop over parents rather than a call for each, because a chain may be longer than the stack is
// deep.
template <typename I>
std::shared_ptr<IValue> Parameters<I>::getParameter(const int& key) const {
    const Parameters* set = this;
    for (;;) {
        if (const Place place(set->values_, key); place.taken) return *place.at;
        const I* const parent = set->parent_.get();
        if (!parent) return nullptr;
        set = plainSet(*parent);
        if (!set) return parent->getParameter(key);
    }
}

template <typename I>
void Parameters<I>::addParameter(std::shared_ptr<IValue> value) {
    if (value) insertOrReplace(values_, std::move(value));
}

template <typename I>
void Parameters<I>::clear() {
    decltype(values_)().swap(values_);
}

template class Parameters<IParameters>;
template class Parameters<IResult>;

}  // namespace dfx
