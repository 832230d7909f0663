#include "files/ParameterText.h"

#include <cmath>
#include <concepts>

#include <corvane/rules/CQorParameter.h>

#include "language/Messages.h"

namespace {

template <typename T>
CStringW valueText(const T& value) {
    return CQorDataTypeConverter().ValueToText(value);
}
CStringW valueText(double value) {
    CStringW text = CQorDataTypeConverter().ValueToText(value);
    if (text.Find(u'.') >= 0) text.TrimRight(u"0").TrimRight(u".");
    return text;
}
CStringW valueText(COleDateTime* value) {
    CStringW text;
    if (value) text.Format(u"day %f", value->m_dt);
    return text;
}
CStringW valueText(QORCustomRuleData* value) {
    CStringW text;
    if (!value) return text;
    for (const CStringW& part : *value)
        text += (text.IsEmpty() ? CStringW() : CStringW(u" | ")) + part;
    return text;
}

/// For people. Files of results have the plain value.
CStringW shownText(const auto& value) {
    return valueText(value);
}
CStringW shownText(bool value) {
    return value ? tr("yes") : tr("no");
}

results::Parameter::Value plainValue(bool value) {
    return value;
}
results::Parameter::Value plainValue(double value) {
    if (!std::isfinite(value)) return valueText(value).ToUtf8();
    return value;
}
results::Parameter::Value plainValue(std::integral auto value) {
    return static_cast<std::int64_t>(value);
}
results::Parameter::Value plainValue(CStringW* value) {
    return value ? value->ToUtf8() : std::string();
}
template <typename T>
results::Parameter::Value plainValue(T* value) {
    return valueText(value).ToUtf8();
}

template <typename T>
results::Parameter valuesOf(const CQorParamStorage& storage) {
    const auto& parameter = *static_cast<const CQorParameter<T>*>(storage.m_pParameter);
    results::Parameter result{
        storage.m_lId, parameter.m_csName.ToUtf8(), parameter.m_bStatus != 0, {}};
    for (int i = 0; i < parameter.m_Values.GetSize(); ++i)
        result.values.push_back(plainValue(parameter.m_Values.GetAt(i)));
    return result;
}

template <typename T>
ParameterText describe(const CQorParamStorage& storage, Message kind) {
    const auto& parameter = *static_cast<const CQorParameter<T>*>(storage.m_pParameter);
    ParameterText text{parameter.m_csName, tr(kind), parameter.m_bStatus, {}};
    for (int i = 0; i < parameter.m_Values.GetSize(); ++i)
        text.values.push_back(shownText(parameter.m_Values.GetAt(i)));
    return text;
}

}  // namespace

ParameterText describe(const CQorParamStorage& storage) {
    if (!storage.m_pParameter) return {{}, tr("illegal"), false, {}};
    switch (storage.m_Type) {
        case Type_Int:
            return describe<int>(storage, "whole number");
        case Type_Long:
            return describe<QorLong>(storage, "whole number");
        case Type_Bool:
            return describe<bool>(storage, "yes or no");
        case Type_Double:
            return describe<double>(storage, "number");
        case Type_CStringPtr:
            return describe<CStringW*>(storage, "text");
        case Type_COleDateTimePtr:
            return describe<COleDateTime*>(storage, "date");
        case Type_ColorRef:
            return describe<QorULong>(storage, "colour");
        case Type_CustomRuleData:
            return describe<QORCustomRuleData*>(storage, "record");
    }
    return {{}, tr("illegal"), false, {}};
}

results::Parameter valuesOf(const CQorParamStorage& storage) {
    if (storage.m_pParameter) {
        switch (storage.m_Type) {
            case Type_Int:
                return valuesOf<int>(storage);
            case Type_Long:
                return valuesOf<QorLong>(storage);
            case Type_Bool:
                return valuesOf<bool>(storage);
            case Type_Double:
                return valuesOf<double>(storage);
            case Type_CStringPtr:
                return valuesOf<CStringW*>(storage);
            case Type_COleDateTimePtr:
                return valuesOf<COleDateTime*>(storage);
            case Type_ColorRef:
                return valuesOf<QorULong>(storage);
            case Type_CustomRuleData:
                return valuesOf<QORCustomRuleData*>(storage);
        }
    }
    return {storage.m_lId, {}, true, {}};
}
