#pragma once

#include <corvane/base/Types.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>

namespace corvane::rules {

/// The first storage with that number, or null.
inline CQorParamStorage* findStorage(const CQorArray<CQorParamStorage*>& storages, QorLong id) {
    for (int i = 0; i < storages.GetSize(); ++i) {
        CQorParamStorage* const storage = storages.GetAt(i);
        if (storage && storage->m_lId == id) return storage;
    }
    return nullptr;
}

}  // namespace corvane::rules
