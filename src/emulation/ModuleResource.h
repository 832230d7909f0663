#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "emulation/FileWindow.h"

namespace corvane::emulation {

/// The bytes of a resource with a named type and a number in a Windows module of 32 or 64 bits, in
/// whatever language stands first; nothing when there is none or the module is damaged.
std::optional<FileWindow> findModuleResource(const FileWindow& module, std::u16string_view type,
                                             std::uint32_t number);

}  // namespace corvane::emulation
