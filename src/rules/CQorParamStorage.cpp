#include <corvane/app/StringResources.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/rules/CQorParamStorage.h>

#include "rules/StorageIndex.h"
#include "rules/Storages.h"

// Defined here, so that they are among the library's exports.
CQorParamStorage::CQorParamStorage() = default;
CQorParamStorage& CQorParamStorage::operator=(const CQorParamStorage&) = default;

CQorParamStorage::~CQorParamStorage() {
    corvane::rules::forgetStorage();
    corvane::rules::visitParameter(this, []<typename T>(CQorParameter<T>& parameter) {
        if constexpr (corvane::kClonedValue<T>) {
            for (const T value : parameter.m_Values)
                delete value;
        }
        delete &parameter;
    });
}

namespace corvane::rules {

void reportIllegalParameter() {
    AfxMessageBox(ResourceText(resource::kIllegalParameter).data());
}

}  // namespace corvane::rules
