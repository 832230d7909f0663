#pragma once

#include <string>
#include <string_view>

namespace corvane::system {

/// 16-bit text of 8-bit text in the process's code page. On POSIX the code page is UTF-8 whatever
/// the locale says, so that a file means the same in every process; ill-formed bytes become U+FFFD.
std::u16string widen(std::string_view text);

/// 8-bit text in the process's code page; what the code page lacks becomes its default character.
std::string narrow(std::u16string_view text);

/// Compares in the order of the user's language, as the environment names it when the process first
/// asks: below 0, 0 or above 0. What this order holds equal is ordered by code unit, and so is
/// everything where the language is not installed.
int collate(std::u16string_view a, std::u16string_view b);

}  // namespace corvane::system
