#pragma once

// The operations of CQorParameter; <corvane/rules/CQorParameter.h> includes this.

#include <corvane/rules/CQorParameter.h>

template <typename T>
CQorParameter<T>& CQorParameter<T>::operator=(const CQorParameter& source) {
    if (this == &source) return *this;
    m_csName = source.m_csName;
    m_Operator = source.m_Operator;
    m_ParamType = source.m_ParamType;
    m_csRemarks = source.m_csRemarks;
    m_bStatus = source.m_bStatus;
    if constexpr (corvane::kClonedValue<T>) {
        releaseValues();
        for (const T& value : source.m_Values)
            m_Values.Add(corvane::cloneValue(value));
    } else {
        m_Values = source.m_Values;
    }
    assignScalar(source);
    return *this;
}

template <typename T>
void CQorParameter<T>::releaseValues() {
    for (int i = m_Values.GetSize(); i-- > 0;) {
        if constexpr (corvane::kClonedValue<T>) delete m_Values.GetAt(i);
        m_Values.RemoveAt(i);
    }
}

template <typename T>
void CQorParameter<T>::assignScalar(const CQorParameter& source) {
    if constexpr (corvane::kClonedValue<T>) {
        auto& owned = scalarClone_.object;
        const T clone = corvane::cloneValue(source.m_Scalar);
        if constexpr (std::is_same_v<T, COleDateTime*>) {
            if (m_Scalar != owned.get()) delete m_Scalar;
        }
        owned.reset(clone);
        m_Scalar = clone;
    } else {
        m_Scalar = source.m_Scalar;
    }
}

template <typename T>
bool CQorParameter<T>::differ(const T& a, const T& b) {
    if constexpr (corvane::kClonedValue<T>) {
        if (!a || !b) return a != b;
        if constexpr (std::is_same_v<T, QORCustomRuleData*>) return a->GetSize() != b->GetSize();
        return !(*a == *b);
    } else {
        return a != b;
    }
}

template <typename T>
bool CQorParameter<T>::UpdateTarget(CQorParameter& target) const {
    if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, COleDateTime*>) {
        return false;
    } else {
        const auto same = [](const T& a, const T& b) { return !differ(a, b); };
        const auto& values = target.m_Values;
        const bool differs =
            m_Operator != target.m_Operator || m_bStatus != target.m_bStatus ||
            !std::equal(m_Values.begin(), m_Values.end(), values.begin(), values.end(), same);
        target = *this;
        return differs;
    }
}

template <typename T>
void CQorParameter<T>::dropBrokenGroup() {
    const int count = m_Values.GetSize();
    if (m_Operator != QorOperator_Grouped || count % 3 == 0 || count % 2 == 0) return;
    releaseValues();
    m_Values.Reset();
}

template <typename T>
void CQorParameter<T>::writeTo(corvane::ParameterWriter& writer) {
    dropBrokenGroup();
    writer.addHead({m_csName, m_lType, m_bStatus, m_Operator, m_ParamType});
    const CQorDataTypeConverter converter;
    for (const T& value : m_Values) {
        if (m_ParamType == QorParamType_Attributes) {
            writer.addRecord(converter.ValueToAttributes(value));
        } else {
            writer.addText(converter.ValueToText(value));
        }
    }
    writer.addRemarks(m_csRemarks);
}

template <typename T>
QorXMLNode* CQorParameter<T>::GetXMLNode() {
    if (!corvane::ParameterWriter::canWrite()) return nullptr;
    corvane::ParameterWriter writer;
    writeTo(writer);
    return writer.release();
}

template <typename T>
void CQorParameter<T>::AppendXMLNode(const QorXMLNode& parent) {
    corvane::ParameterWriter writer(parent);
    writeTo(writer);
}

template <typename T>
void CQorParameter<T>::PopulateFromXML(QorXMLNode* parent) {
    if (!parent) return;
    corvane::ParameterReader reader(*parent, m_lType);
    if (reader.found()) PopulateFromXML(reader);
}

template <typename T>
void CQorParameter<T>::PopulateFromXML(corvane::ParameterReader& reader) {
    m_Operator = reader.readOperator();
    m_ParamType = reader.readParamType();
    m_bStatus = reader.readStatus();
    const CQorDataTypeConverter converter;
    while (reader.nextValue()) {
        T value{};
        if (m_ParamType == QorParamType_Attributes) {
            converter.AttributesToValue(reader.record(), value);
        } else {
            converter.TextToValue(reader.text(), value);
        }
        m_Values.Add(value);
    }
}
