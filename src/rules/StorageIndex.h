#pragma once

#include <corvane/base/Types.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>

namespace corvane::rules {

/// What findStorage gives, for long lists in near constant time: after some walks over a list its
/// numbers are sorted, and later look-ups use them for as long as the list holds the same storages.
/// A module may change the list as it likes; the number of a storage is set before it is looked
/// for, and stays.
CQorParamStorage* findIndexed(const CQorArray<CQorParamStorage*>& storages, QorLong id);

/// A storage is gone: another one may be made at its address.
void forgetStorage();

}  // namespace corvane::rules
