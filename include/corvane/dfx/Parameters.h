#pragma once

#include <memory>
#include <set>

#include <corvane/dfx/IParameters.h>
#include <corvane/dfx/IResult.h>

namespace dfx {

/// The set of values under the interface `I`, with an optional parent: what the set does not hold
/// is looked up there. `Parameters<IParameters>` is complete; `Parameters<IResult>` leaves status
/// and error code to Result or to a module's own class. The library holds the code of both.
///
/// **Sharing:** the set shares its values with all others that hold them. A copy has the same
/// values and the same parent; adding to one of the two does not touch the other, but a changed
/// value shows in both.
///
/// **Failure:** `std::bad_alloc` leaves the set as it was, and replacing a value needs no memory.
/// A chain of parents must end. It may have any length: the library's own sets are searched and
/// ended in a loop. Only a parent of a module's own class, which may answer in its own way, costs a
/// nested call. A set may be read on several threads while none changes it.
template <typename I>
class CORVANE_EXPORT Parameters : public I {
public:
    Parameters();
    /// An empty set before that parent, which may be empty.
    explicit Parameters(std::shared_ptr<I> parent);
    Parameters(const Parameters& source);
    /// Gives up the parent first and then the values.
    ~Parameters() override;
    Parameters& operator=(const Parameters& source);

    /// The set's own value, else what the parent's getParameter gives, else an empty handle. The
    /// search takes logarithmic time in each set.
    std::shared_ptr<IValue> getParameter(const int& key) const override;
    /// The value shadows one of the same key in the parent, which stays as it is. A replaced value
    /// lives on with its other holders.
    void addParameter(std::shared_ptr<IValue> value) override;
    /// The parent stays, so that look-ups still reach its values.
    void clear() override;

private:
    std::set<std::shared_ptr<IValue>, IsValueLessThan> values_;
    std::shared_ptr<I> parent_;
};

extern template class Parameters<IParameters>;
extern template class Parameters<IResult>;

}  // namespace dfx
