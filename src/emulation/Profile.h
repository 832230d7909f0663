#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::emulation {

/// A value of a profile (INI) file by the rules of the platform's profile service: names are
/// trimmed and ignore case, one pair of equal quotes around the value goes, only the first section
/// of the name is searched and the first key of the name counts. What is missing gives an empty
/// text. The value is cut to `capacity` - 1 units. The file is read afresh at each call; it may be
/// UTF-8, with or without BOM, or UTF-16 with BOM.
std::u16string profileText(std::u16string_view section, std::u16string_view key,
                           std::u16string_view file, std::size_t capacity = 260);

}  // namespace corvane::emulation
