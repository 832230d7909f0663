#include "ParameterText.h"

#include <corvane/rules/CQorParameter.h>

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
CStringW valueText(bool value) {
    return value ? u"yes" : u"no";
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

template <typename T>
ParameterText describe(const CQorParamStorage& storage, const char16_t* kind) {
    const auto& parameter = *static_cast<const CQorParameter<T>*>(storage.m_pParameter);
    ParameterText text{parameter.m_csName, kind, parameter.m_bStatus, {}};
    for (int i = 0; i < parameter.m_Values.GetSize(); ++i)
        text.values.push_back(valueText(parameter.m_Values.GetAt(i)));
    return text;
}

}  // namespace

ParameterText describe(const CQorParamStorage& storage) {
    if (!storage.m_pParameter) return {{}, u"illegal", false, {}};
    switch (storage.m_Type) {
        case Type_Int:
            return describe<int>(storage, u"whole number");
        case Type_Long:
            return describe<QorLong>(storage, u"whole number");
        case Type_Bool:
            return describe<bool>(storage, u"yes or no");
        case Type_Double:
            return describe<double>(storage, u"number");
        case Type_CStringPtr:
            return describe<CStringW*>(storage, u"text");
        case Type_COleDateTimePtr:
            return describe<COleDateTime*>(storage, u"date");
        case Type_ColorRef:
            return describe<QorULong>(storage, u"colour");
        case Type_CustomRuleData:
            return describe<QORCustomRuleData*>(storage, u"record");
    }
    return {{}, u"illegal", false, {}};
}
