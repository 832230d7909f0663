#pragma once

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/rules/ParameterKinds.h>

/// The untyped holder of one parameter, through which rules and constraints keep parameters of
/// different kinds in one list. It owns its parameter and, for the pointer kinds, the values in it.
///
/// With a kind of 1 to 8, `m_pParameter` is null or points to the CQorParameter of that kind; all
/// code casts on `m_Type` alone. A storage keeps its number, and stays in the list of the rule or
/// constraint to which it was added: look-ups by number in long lists rely on it. The fields and
/// their order are part of the interface to rule modules.
class CORVANE_EXPORT CQorParamStorage {
public:
    CQorParamStorage();
    /// Deletes the parameter with its values. A storage of an illegal kind deletes nothing.
    ~CQorParamStorage();
    CQorParamStorage(const CQorParamStorage&) = delete;
    /// Copies the five fields as they are. Both storages then hold the same parameter: the caller
    /// clears `m_pParameter` of one of them before that is destroyed. What this storage held before
    /// is not released.
    CQorParamStorage& operator=(const CQorParamStorage&);

    Type_e m_Type = Type_e(0);     ///< Kind of the parameter.
    QorLong m_lId = 0;             ///< The parameter's number.
    bool m_bOption = false;        ///< For rule modules; the library stores it.
    bool m_bStatus = true;         ///< The status given at creation; the library stores it.
    void* m_pParameter = nullptr;  ///< The typed parameter.
};
