#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <corvane/platform/Guid.h>

namespace corvane::emulation {

struct TypeLibraryAttributes {
    Guid guid;
    std::uint16_t majorVersion;
    std::uint16_t minorVersion;
    std::uint32_t lcid;
};

/// Reads the attributes of a type library file: a binary .tlb (MSFT format), or a Windows module
/// that carries one as resource "TYPELIB" 1, or the number after a last "\" of the path. The
/// language is that of the library, not of its help texts. Every offset is checked, and no more is
/// read than the attributes need; nothing when the file is missing, damaged or no type library.
std::optional<TypeLibraryAttributes> readTypeLibrary(std::u16string_view path);

}  // namespace corvane::emulation
