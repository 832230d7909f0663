#pragma once

#include <optional>

#include "emulation/FileWindow.h"
#include "emulation/TypeLibrary.h"

namespace corvane::emulation {

/// The attributes of a type library in the binary MSFT format, or nothing.
std::optional<TypeLibraryAttributes> readMsftLibrary(const FileWindow& library);

}  // namespace corvane::emulation
