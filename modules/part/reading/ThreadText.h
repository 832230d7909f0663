#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::part::reading {

/// A thread as standards write it.
struct Designation {
    std::string text;       ///< "M6x1-6H", "1/4-20 UNC-2B", "G1/2"
    double diameter = 0.0;  ///< nominal, mm
    double pitch = 0.0;     ///< mm; 0 if the text does not tell
};

/// The first designation in a text of UTF-8. One that can mean other things too, such as `M6` or
/// `R1/2`, counts only where the text says that it is about a thread, or where the caller does and
/// there is nothing else in it.
///
/// Known are metric threads (ISO 261, ISO 965-1), unified ones (ASME B1.1), pipe threads (ISO
/// 228-1, ISO 7-1, ASME B1.20.1) and trapezoidal ones (ISO 2904).
std::optional<Designation> threadIn(std::string_view text, bool aboutThreads);

}  // namespace corvane::part::reading
