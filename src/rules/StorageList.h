#pragma once

#include <corvane/base/Types.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>

namespace corvane::rules {

/// The first storage with that number, or null.
inline CQorParamStorage* findStorage(const CQorArray<CQorParamStorage*>& storages, QorLong id) {
    for (CQorParamStorage* const storage : storages) {
        if (storage && storage->m_lId == id) return storage;
    }
    return nullptr;
}

}  // namespace corvane::rules
