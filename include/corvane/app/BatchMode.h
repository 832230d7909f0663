#pragma once

#include <corvane/base/Export.h>

extern "C" {

/// Stores whether the process runs without a user, at first false. In batch mode a script's failure
/// shows no message. `status` must not be null.
CORVANE_EXPORT void GetBatchModeStatus(bool* status);
/// Says whether the process runs without a user.
CORVANE_EXPORT void SetBatchModeStatus(bool status);
}
