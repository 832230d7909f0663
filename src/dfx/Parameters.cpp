#include <new>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <corvane/dfx/Criteria.h>
#include <corvane/dfx/Parameters.h>
#include <corvane/dfx/Result.h>

#include "dfx/Sets.h"

namespace dfx {

namespace {

using Values = std::set<std::shared_ptr<IValue>, IsValueLessThan>;

// What is left of a set whose destructor has run.
struct Remains {
    std::shared_ptr<IParameters> parent;
    Values values;
};

// Ends the sets of a chain. Each of them, in its destructor, leaves its remains here.
class ChainRelease {
public:
    ChainRelease() : outer_(std::exchange(innermost_, this)) {}
    ChainRelease(const ChainRelease&) = delete;
    ChainRelease& operator=(const ChainRelease&) = delete;
    ~ChainRelease() { innermost_ = outer_; }

    void run(std::shared_ptr<IParameters> parent) {
        release(std::move(parent));
        while (!remains_.empty()) {
            if (remains_.back().parent) {
                release(std::move(remains_.back().parent));
            } else {
                // Out of the list first: what ends with the values may end other sets.
                const Remains last = std::move(remains_.back());
                remains_.pop_back();
            }
        }
    }

    // False when the set is none of a chain that is being released here, or memory is short.
    static bool takeOver(const IParameters* set, std::shared_ptr<IParameters>& parent,
                         Values& values) {
        if (!innermost_ || innermost_->releasing_ != set) return false;
        try {
            Remains& remains = innermost_->remains_.emplace_back();
            remains.parent.swap(parent);
            remains.values.swap(values);
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

private:
    void release(std::shared_ptr<IParameters> set) {
        releasing_ = set.get();
        set.reset();
        releasing_ = nullptr;
    }

    static thread_local ChainRelease* innermost_;

    ChainRelease* outer_;
    const IParameters* releasing_ = nullptr;
    std::vector<Remains> remains_;
};

thread_local ChainRelease* ChainRelease::innermost_ = nullptr;

}  // namespace

void releaseParent(const IParameters* set, std::shared_ptr<IParameters> parent,
                   Values& values) noexcept {
    if (!parent || ChainRelease::takeOver(set, parent, values)) return;
    ChainRelease().run(std::move(parent));
}

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
