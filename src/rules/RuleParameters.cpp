#include <memory>

#include <corvane/rules/CQorRule.h>

#include "app/CurrentStringTable.h"
#include "rules/IllegalParameter.h"
#include "rules/ParameterVisit.h"
#include "rules/StorageList.h"

namespace rules = corvane::rules;

namespace {

template <typename T>
CQorParameter<T>* item(const CQorArray<CQorParamStorage*>& storages, QorLong id, Type_e type) {
    const CQorParamStorage* const storage = rules::findStorage(storages, id);
    if (!storage || storage->m_Type != type) return nullptr;
    return static_cast<CQorParameter<T>*>(storage->m_pParameter);
}

}  // namespace

CQorParamStorage* CQorRule::FindParameterInArray(QorLong id) {
    return rules::findStorage(m_Parameters, id);
}

CQorParameter<int>* CQorRule::GetIntItem(QorLong id) const {
    return item<int>(m_Parameters, id, Type_Int);
}

CQorParameter<QorLong>* CQorRule::GetLongItem(QorLong id) const {
    return item<QorLong>(m_Parameters, id, Type_Long);
}

CQorParameter<bool>* CQorRule::GetBoolItem(QorLong id) const {
    return item<bool>(m_Parameters, id, Type_Bool);
}

CQorParameter<double>* CQorRule::GetDoubleItem(QorLong id) const {
    return item<double>(m_Parameters, id, Type_Double);
}

CQorParameter<CStringW*>* CQorRule::GetCStringPtrItem(QorLong id) const {
    return item<CStringW*>(m_Parameters, id, Type_CStringPtr);
}

CQorParameter<COleDateTime*>* CQorRule::GetCOleDateTimePtrItem(QorLong id) const {
    return item<COleDateTime*>(m_Parameters, id, Type_COleDateTimePtr);
}

CQorParameter<QorULong>* CQorRule::GetColorRefItem(QorLong id) const {
    return item<QorULong>(m_Parameters, id, Type_ColorRef);
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
