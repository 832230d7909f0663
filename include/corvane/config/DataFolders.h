#pragma once

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>

extern "C" {

/// The folder of the machine-wide settings, with its closing separator: "Settings" below the folder
/// that the environment variable CORVANE_DATA_DIR names, else below "TessalyLtd/Corvane" in the
/// machine's common folder for application data. It is made, with its parents, when it is missing.
///
/// Copies the zero-terminated path to `buffer` when that is not null and `*size`, its capacity in
/// code units, has room for it; `size` itself never changes. The result is the path's length
/// without the terminator, copied or not; 0 when there is no path.
CORVANE_EXPORT QorLong GetDataSettingsFolderPath(char16_t* buffer, const QorLong* size);
}
