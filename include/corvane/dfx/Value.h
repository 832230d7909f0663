#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <corvane/base/Types.h>
#include <corvane/dfx/IValue.h>
#include <corvane/dfx/IVoidFunctor.h>
#include <corvane/platform/ComPtr.h>

namespace dfx {

/// A value of one held type `T` with its number `N` out of IValue::TYPE. The 27 pairs at the end of
/// this file are all there are; the library holds their code, so that every module works with
/// the same class.
///
/// What copying and destruction mean depends on the held type:
/// - a number is copied;
/// - a **plain pointer** is borrowed: copies point at the same object, and the value neither counts
///   nor deletes it. The code that sets it keeps the object alive;
/// - an `ATL::CComPtr` is counted: each copy holds a reference and releases it;
/// - a `std::shared_ptr` is shared by all copies, and the last one ends the object;
/// - a text or a container is copied with all its elements.
///
/// A value may be read on several threads; a thread that changes it must have it to itself. The
/// only failure is `std::bad_alloc`, which leaves the value as it was. The order of the fields is
/// part of the interface to modules.
template <typename T, int N>
class CORVANE_EXPORT Value : public IValue {
public:
    /// A value without a description.
    Value(const int& key, T value);
    /// Keeps a copy of the zero-terminated `description`; null gives a value without one.
    Value(const int& key, const char16_t* description, T value);
    /// The copy has a description of its own.
    Value(const Value& source);
    ~Value() override;

    /// Takes over key and held value. A source without a description leaves this value's in place.
    Value& operator=(const Value& source);

    TYPE type() const override;  ///< `N`.
    int key() const override;
    /// Valid until the value ends or takes over another description.
    const char16_t* description() const override;

    /// The held value in place, for reading and changing.
    T& get() { return value_; }
    /// A copy of the held value, by the rules of its type.
    T get() const { return value_; }

private:
    int key_;
    std::unique_ptr<char16_t[]> description_;
    T value_;
};

extern template class Value<bool, IValue::TYPE_BOOL>;
extern template class Value<unsigned char, IValue::TYPE_UCHAR>;
extern template class Value<short, IValue::TYPE_SHORT>;
extern template class Value<int, IValue::TYPE_INT>;
extern template class Value<unsigned short, IValue::TYPE_USHORT>;
extern template class Value<unsigned int, IValue::TYPE_UINT>;
extern template class Value<float, IValue::TYPE_FLOAT>;
extern template class Value<QorLong, IValue::TYPE_LONG>;
extern template class Value<double, IValue::TYPE_DOUBLE>;
extern template class Value<std::shared_ptr<unsigned short>, IValue::TYPE_SHARED_USHORT>;
extern template class Value<IUnknown*, IValue::TYPE_IUNKNOWN>;
extern template class Value<ATL::CComPtr<IUnknown>, IValue::TYPE_IUNKNOWN>;
extern template class Value<IDispatch*, IValue::TYPE_IDISPATCH>;
extern template class Value<ATL::CComPtr<IDispatch>, IValue::TYPE_IDISPATCH>;
extern template class Value<void*, IValue::TYPE_VOID_PTR>;
extern template class Value<std::vector<int>, IValue::TYPE_INT_VECTOR>;
extern template class Value<std::vector<float>, IValue::TYPE_FLOAT_VECTOR>;
extern template class Value<std::vector<double>, IValue::TYPE_DOUBLE_VECTOR>;
extern template class Value<std::set<int>, IValue::TYPE_INT_SET>;
extern template class Value<int*, IValue::TYPE_INT_PTR>;
extern template class Value<float*, IValue::TYPE_FLOAT_PTR>;
extern template class Value<double*, IValue::TYPE_DOUBLE_PTR>;
extern template class Value<std::shared_ptr<IVoidFunctor>, IValue::TYPE_FUNCTOR>;
extern template class Value<std::u16string, IValue::TYPE_STRING>;
extern template class Value<std::vector<std::u16string>, IValue::TYPE_STRING_VECTOR>;
extern template class Value<std::vector<std::vector<std::int64_t>>,
                            IValue::TYPE_INT64_VECTOR_VECTOR>;
extern template class Value<std::map<std::int64_t, std::set<std::int64_t>>,
                            IValue::TYPE_INT64_SET_MAP>;

}  // namespace dfx
