#pragma once

#include <optional>

#include "platform/FileWindow.h"
#include "platform/TypeLibrary.h"

namespace corvane::platform {

/// The attributes of a type library in the binary MSFT format, or nothing.
std::optional<TypeLibraryAttributes> readMsftLibrary(const FileWindow& library);

}  // namespace corvane::platform
