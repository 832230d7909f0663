#pragma once

#include <type_traits>

#include <corvane/base/Types.h>
#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/CQorParameter.h>
#include <corvane/rules/ParameterKinds.h>

namespace corvane::rules {

/// Calls `use` with std::type_identity of the value type of a kind. False, without a call, for an
/// illegal kind.
template <typename Use>
bool visitKind(Type_e kind, Use use) {
    switch (kind) {
        case Type_Int:
            use(std::type_identity<int>());
            return true;
        case Type_Bool:
            use(std::type_identity<bool>());
            return true;
        case Type_Long:
            use(std::type_identity<QorLong>());
            return true;
        case Type_Double:
            use(std::type_identity<double>());
            return true;
        case Type_CStringPtr:
            use(std::type_identity<CStringW*>());
            return true;
        case Type_COleDateTimePtr:
            use(std::type_identity<COleDateTime*>());
            return true;
        case Type_ColorRef:
            use(std::type_identity<QorULong>());
            return true;
        case Type_CustomRuleData:
            use(std::type_identity<QORCustomRuleData*>());
            return true;
    }
    return false;
}

/// The parameter of a storage that has one of the kind of T.
template <typename T>
CQorParameter<T>& parameterOf(const CQorParamStorage& storage) {
    return *static_cast<CQorParameter<T>*>(storage.m_pParameter);
}

/// Calls `use` with the typed parameter of a storage. False, without a call, when the storage is
/// null, has no parameter or is of illegal kind.
template <typename Use>
bool visitParameter(const CQorParamStorage* storage, Use use) {
    if (!storage || !storage->m_pParameter) return false;
    return visitKind(storage->m_Type,
                     [&]<typename T>(std::type_identity<T>) { use(parameterOf<T>(*storage)); });
}

/// The first storage with that number, or null.
inline CQorParamStorage* findStorage(const CQorArray<CQorParamStorage*>& storages, QorLong id) {
    for (CQorParamStorage* const storage : storages) {
        if (storage && storage->m_lId == id) return storage;
    }
    return nullptr;
}

/// True for a constraint that is on and names the material, case ignored; an empty material meets
/// none.
inline bool meets(const CQORConstraint* constraint, const CStringW& material) {
    return !material.IsEmpty() && constraint && constraint->m_bStatus &&
           constraint->m_Type == QORConstraint_Material &&
           constraint->m_csValue.CompareNoCase(material) == 0;
}

/// Tells the user that a rule or a constraint holds a parameter of illegal kind.
void reportIllegalParameter();

/// What findStorage gives, for long lists in near constant time: after some walks over a list its
/// numbers are sorted, and later look-ups use them for as long as the list holds the same storages.
/// A module may change the list as it likes, but that a storage has its number before it is looked
/// for, keeps it, and stays in the list to which it was added.
CQorParamStorage* findIndexed(const CQorArray<CQorParamStorage*>& storages, QorLong id);

}  // namespace corvane::rules
