#include <corvane/rules/CQorParamStorage.h>

#include "rules/ParameterVisit.h"

CQorParamStorage::~CQorParamStorage() {
    corvane::rules::visitParameter(this, []<typename T>(CQorParameter<T>& parameter) {
        if constexpr (corvane::kClonedValue<T>) {
            for (int i = 0; i < parameter.m_Values.GetSize(); ++i)
                delete parameter.m_Values.GetAt(i);
        }
        delete &parameter;
    });
}
