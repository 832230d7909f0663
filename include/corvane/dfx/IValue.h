#pragma once

#include <concepts>
#include <memory>

#include <corvane/base/Export.h>

namespace dfx {

/// A typed value as code sees it that does not know what it holds: a key, a type number and an
/// optional text. Value is its implementation.
///
/// Values are held by `std::shared_ptr<IValue>`. `std::dynamic_pointer_cast` to the Value of a
/// held type gives an empty handle for any other one, across modules too. The order of the virtual
/// operations is part of the interface to modules.
class CORVANE_EXPORT IValue {
public:
    /// The number of a held type. Numbers 10 and 12 mean a plain interface pointer and a counted
    /// handle of it alike; 11, 13 and 22 belong to no held type. The modules that exchange the
    /// pointer of number 9 agree on what it points to and on how much of it; its handle frees it.
    enum TYPE : int {
        TYPE_BOOL = 0,
        TYPE_UCHAR = 1,
        TYPE_SHORT = 2,
        TYPE_INT = 3,
        TYPE_USHORT = 4,
        TYPE_UINT = 5,
        TYPE_FLOAT = 6,
        TYPE_LONG = 7,
        TYPE_DOUBLE = 8,
        TYPE_SHARED_USHORT = 9,
        TYPE_IUNKNOWN = 10,
        TYPE_IDISPATCH = 12,
        TYPE_VOID_PTR = 14,
        TYPE_INT_VECTOR = 15,
        TYPE_FLOAT_VECTOR = 16,
        TYPE_DOUBLE_VECTOR = 17,
        TYPE_INT_SET = 18,
        TYPE_INT_PTR = 19,
        TYPE_FLOAT_PTR = 20,
        TYPE_DOUBLE_PTR = 21,
        TYPE_FUNCTOR = 23,
        TYPE_STRING = 24,
        TYPE_STRING_VECTOR = 25,
        TYPE_INT64_VECTOR_VECTOR = 26,
        TYPE_INT64_SET_MAP = 27
    };

    IValue() = default;
    IValue(const IValue&) = default;
    IValue& operator=(const IValue&) = default;
    virtual ~IValue();

    virtual TYPE type() const = 0;  ///< The number of the held type.

    /// The number by which a set finds the value. The modules that exchange values give the numbers
    /// their meaning; every one is free for use. It must not change while the value is in a
    /// set: the set orders its values by it.
    virtual int key() const = 0;

    /// A zero-terminated text of the value's own, or null.
    virtual const char16_t* description() const = 0;
};

/// The order of values in a set: by key alone. Handles are not empty. A set is also searched by a
/// predicate that holds for the values before the place that is looked for, so without a value to
/// search for.
struct IsValueLessThan {
    /// Lets a set be searched by a predicate.
    using is_transparent = void;

    ///@{
    /// True when the first argument comes before the second.
    bool operator()(const std::shared_ptr<IValue>& left,
                    const std::shared_ptr<IValue>& right) const {
        return left->key() < right->key();
    }
    template <std::predicate<const std::shared_ptr<IValue>&> IsBefore>
    bool operator()(const std::shared_ptr<IValue>& left, const IsBefore& isBefore) const {
        return isBefore(left);
    }
    ///@}
};

}  // namespace dfx
