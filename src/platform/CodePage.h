#pragma once

#include <string>
#include <string_view>

namespace corvane::platform {

/// 16-bit text of 8-bit text in the process's code page. On POSIX the code page is UTF-8 whatever
/// the locale says, so that a file means the same in every process; ill-formed bytes become U+FFFD.
std::u16string widen(std::string_view text);

/// 8-bit text in the process's code page; what the code page lacks becomes its default character.
std::string narrow(std::u16string_view text);

}  // namespace corvane::platform
