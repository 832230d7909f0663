#pragma once

#include <type_traits>
#include <vector>

#include <corvane/base/Types.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/CQorParameter.h>

namespace corvane {

/// The values of a parameter as plain values, without pointers: T is int (kinds 1 and 2), bool,
/// double, CStringW, COleDateTime, QorULong (colours) or QORCustomRuleData (records). A null value
/// is an empty text, date or record. Empty for a null storage and for one of another kind.
template <typename T>
std::vector<T> ParameterValues(const CQorParamStorage* storage) {
    std::vector<T> values;
    if (!storage || !storage->m_pParameter) return values;
    const auto take = [&]<typename Held>(std::type_identity<Held>) {
        for (const Held& value :
             static_cast<const CQorParameter<Held>*>(storage->m_pParameter)->m_Values) {
            if constexpr (std::is_pointer_v<Held>) {
                values.push_back(value ? *value : T());
            } else {
                values.push_back(static_cast<T>(value));
            }
        }
    };
    const Type_e kind = storage->m_Type;
    if constexpr (std::is_same_v<T, bool>) {
        if (kind == Type_Bool) take(std::type_identity<bool>());
    } else if constexpr (std::is_same_v<T, double>) {
        if (kind == Type_Double) take(std::type_identity<double>());
    } else if constexpr (std::is_same_v<T, QorULong>) {
        if (kind == Type_ColorRef) take(std::type_identity<QorULong>());
    } else if constexpr (std::is_same_v<T, CStringW>) {
        if (kind == Type_CStringPtr) take(std::type_identity<CStringW*>());
    } else if constexpr (std::is_same_v<T, COleDateTime>) {
        if (kind == Type_COleDateTimePtr) take(std::type_identity<COleDateTime*>());
    } else if constexpr (std::is_same_v<T, QORCustomRuleData>) {
        if (kind == Type_CustomRuleData) take(std::type_identity<QORCustomRuleData*>());
    } else {
        static_assert(std::is_same_v<T, int> || std::is_same_v<T, QorLong>);
        if (kind == Type_Int) take(std::type_identity<int>());
        if (kind == Type_Long) take(std::type_identity<QorLong>());
    }
    return values;
}

/// The first value, or `otherwise` when there is none.
template <typename T>
T FirstValue(const CQorParamStorage* storage, T otherwise = T()) {
    std::vector<T> values = ParameterValues<T>(storage);
    return values.empty() ? otherwise : values.front();
}

}  // namespace corvane
