#pragma once

#include <sqlite3.h>

namespace qor_db::sqlite {

/// How long statements wait for the lock of another connection; below 0 counts as 0.
///
/// The database's own time-out asks ever more seldom, up to ten times a second: a reader then
/// hardly ever finds the moments in which a process that writes without a pause has no lock.
void setLockTimeout(sqlite3* handle, int milliseconds);

}  // namespace qor_db::sqlite
