#pragma once

#include <string_view>

namespace corvane::platform {

/// Compares in the order of the user's language, as the environment names it when the process first
/// asks: below 0, 0 or above 0. What this order holds equal is ordered by code unit, and so is
/// everything where the language is not installed.
int collate(std::u16string_view a, std::u16string_view b);

}  // namespace corvane::platform
