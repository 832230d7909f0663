#include <memory>

#include <corvane/rules/CQorRule.h>

#include "app/CurrentStringTable.h"
#include "rules/IllegalParameter.h"
#include "rules/ParameterVisit.h"
#include "rules/StorageList.h"

namespace rules = corvane::rules;

CQorParamStorage* CQorRule::FindParameterInArray(QorLong id) {
    return rules::findStorage(m_Parameters, id);
}

template <typename T>
CQorParameter<T>* CQorRule::item(QorLong id, Type_e type) {
    const CQorParamStorage* const storage = rules::findStorage(m_Parameters, id);
    if (!storage || storage->m_Type != type) return nullptr;
    return static_cast<CQorParameter<T>*>(storage->m_pParameter);
}

CQorParameter<int>* CQorRule::GetIntItem(QorLong id) {
    return item<int>(id, Type_Int);
}

CQorParameter<QorLong>* CQorRule::GetLongItem(QorLong id) {
    return item<QorLong>(id, Type_Long);
}

CQorParameter<bool>* CQorRule::GetBoolItem(QorLong id) {
    return item<bool>(id, Type_Bool);
}

CQorParameter<double>* CQorRule::GetDoubleItem(QorLong id) {
    return item<double>(id, Type_Double);
}

CQorParameter<CStringW*>* CQorRule::GetCStringPtrItem(QorLong id) {
    return item<CStringW*>(id, Type_CStringPtr);
}

CQorParameter<COleDateTime*>* CQorRule::GetCOleDateTimePtrItem(QorLong id) {
    return item<COleDateTime*>(id, Type_COleDateTimePtr);
}

CQorParameter<QorULong>* CQorRule::GetColorRefItem(QorLong id) {
    return item<QorULong>(id, Type_ColorRef);
}

CQorParamStorage* CQorRule::CreateParamStorageObject(Type_e type, QorLong id, QorOperator_e op,
                                                     QorParamType_e paramType, bool status,
                                                     bool option) {
    auto storage = std::make_unique<CQorParamStorage>();
    storage->m_lId = id;
    storage->m_bOption = option;
    storage->m_bStatus = status;
    const bool legal = rules::visitKind(type, [&]<typename T>(std::type_identity<T>) {
        const auto name =
            corvane::FindText(corvane::app::currentStringTable(), static_cast<std::uint32_t>(id));
        auto parameter = std::make_unique<CQorParameter<T>>(name, op, paramType, status);
        parameter->m_lType = id;
        storage->m_Type = type;
        storage->m_pParameter = parameter.release();
    });
    if (!legal) rules::reportIllegalParameter();
    return storage.release();
}

CQORConstraint* CQorRule::CreateConstraintObject(QORConstraintType_e type, CStringW value,
                                                 bool status) {
    return std::make_unique<CQORConstraint>(type, value, status).release();
}

void CQorRule::ClearConstraints() {
    for (int i = m_Constraints.GetSize(); i-- > 0;) {
        delete m_Constraints.GetAt(i);
        m_Constraints.RemoveAt(i);
    }
}
