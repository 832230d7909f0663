#include <corvane/rules/CQorParamStorage.h>

#include "rules/ParameterVisit.h"

// Defined here, so that they stand among the library's exports.
CQorParamStorage::CQorParamStorage() = default;
CQorParamStorage& CQorParamStorage::operator=(const CQorParamStorage&) = default;

CQorParamStorage::~CQorParamStorage() {
    corvane::rules::visitParameter(this, []<typename T>(CQorParameter<T>& parameter) {
        if constexpr (corvane::kClonedValue<T>) {
            for (const T value : parameter.m_Values)
                delete value;
        }
        delete &parameter;
    });
}
