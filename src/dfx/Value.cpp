#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>

#include <corvane/dfx/Value.h>

namespace dfx {
namespace {

std::unique_ptr<char16_t[]> copyOf(const char16_t* text) {
    if (!text) return nullptr;
    const std::size_t size = std::u16string_view(text).size() + 1;
    auto copy = std::make_unique_for_overwrite<char16_t[]>(size);
    std::copy_n(text, size, copy.get());
    return copy;
}

}  // namespace

IValue::~IValue() = default;
IVoidFunctor::~IVoidFunctor() = default;

template <typename T, int N>
Value<T, N>::Value(const int& key, T value) : Value(key, nullptr, std::move(value)) {}

template <typename T, int N>
Value<T, N>::Value(const int& key, const char16_t* description, T value)
    : key_(key), description_(copyOf(description)), value_(std::move(value)) {}

template <typename T, int N>
Value<T, N>::Value(const Value& source)
    : IValue(source),
      key_(source.key_),
      description_(copyOf(source.description_.get())),
      value_(source.value_) {}

template <typename T, int N>
Value<T, N>::~Value() {
    description_.reset();
}

template <typename T, int N>
Value<T, N>& Value<T, N>::operator=(const Value& source) {
    if (this == &source) return *this;
    // What can fail comes before the first change. What the value held ends when it holds the new
    // content whole, because it may look at the value while it ends.
    auto description = copyOf(source.description_.get());
    if constexpr (std::is_convertible_v<T, IUnknown*>) {
        // A handle of an interface sees to both, and a copy of it would count.
        key_ = source.key_;
        value_ = source.value_;
    } else {
        T value(source.value_);
        key_ = source.key_;
        std::swap(value_, value);
    }
    if (description) description_ = std::move(description);
    return *this;
}

template <typename T, int N>
IValue::TYPE Value<T, N>::type() const {
    return static_cast<TYPE>(N);
}

template <typename T, int N>
int Value<T, N>::key() const {
    return key_;
}

template <typename T, int N>
const char16_t* Value<T, N>::description() const {
    return description_.get();
}

template class Value<bool, IValue::TYPE_BOOL>;
template class Value<unsigned char, IValue::TYPE_UCHAR>;
template class Value<short, IValue::TYPE_SHORT>;
template class Value<int, IValue::TYPE_INT>;
template class Value<unsigned short, IValue::TYPE_USHORT>;
template class Value<unsigned int, IValue::TYPE_UINT>;
template class Value<float, IValue::TYPE_FLOAT>;
template class Value<QorLong, IValue::TYPE_LONG>;
template class Value<double, IValue::TYPE_DOUBLE>;
template class Value<std::shared_ptr<unsigned short>, IValue::TYPE_SHARED_USHORT>;
template class Value<IUnknown*, IValue::TYPE_IUNKNOWN>;
template class Value<ATL::CComPtr<IUnknown>, IValue::TYPE_IUNKNOWN>;
template class Value<IDispatch*, IValue::TYPE_IDISPATCH>;
template class Value<ATL::CComPtr<IDispatch>, IValue::TYPE_IDISPATCH>;
template class Value<void*, IValue::TYPE_VOID_PTR>;
template class Value<std::vector<int>, IValue::TYPE_INT_VECTOR>;
template class Value<std::vector<float>, IValue::TYPE_FLOAT_VECTOR>;
template class Value<std::vector<double>, IValue::TYPE_DOUBLE_VECTOR>;
template class Value<std::set<int>, IValue::TYPE_INT_SET>;
template class Value<int*, IValue::TYPE_INT_PTR>;
template class Value<float*, IValue::TYPE_FLOAT_PTR>;
template class Value<double*, IValue::TYPE_DOUBLE_PTR>;
template class Value<std::shared_ptr<IVoidFunctor>, IValue::TYPE_FUNCTOR>;
template class Value<std::u16string, IValue::TYPE_STRING>;
template class Value<std::vector<std::u16string>, IValue::TYPE_STRING_VECTOR>;
template class Value<std::vector<std::vector<std::int64_t>>, IValue::TYPE_INT64_VECTOR_VECTOR>;
template class Value<std::map<std::int64_t, std::set<std::int64_t>>, IValue::TYPE_INT64_SET_MAP>;

}  // namespace dfx
