#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// The units of length that a part's numbers may be in.
namespace corvane::part {

/// A unit of length by one of its names.
struct LengthUnit {
    std::string_view name;     ///< in lower case, as files or people write it
    double millimetres = 0.0;  ///< in one of it
};

/// All that are known: those of the SI, and inch, foot and mil by the international inch of 25.4
/// mm.
inline constexpr std::array<LengthUnit, 18> kLengthUnits{{{"mm", 1},
                                                          {"millimetre", 1},
                                                          {"millimeter", 1},
                                                          {"cm", 10},
                                                          {"centimetre", 10},
                                                          {"centimeter", 10},
                                                          {"m", 1000},
                                                          {"metre", 1000},
                                                          {"meter", 1000},
                                                          {"um", 1e-3},
                                                          {"micrometre", 1e-3},
                                                          {"micron", 1e-3},
                                                          {"in", 25.4},
                                                          {"inch", 25.4},
                                                          {"ft", 304.8},
                                                          {"foot", 304.8},
                                                          {"km", 1e6},
                                                          {"mil", 0.0254}}};

/// Millimetres in the unit of that name, in any case; 0 for an unknown name.
constexpr double millimetresIn(std::string_view unit) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    for (const LengthUnit& known : kLengthUnits) {
        bool same = known.name.size() == unit.size();
        for (std::size_t i = 0; same && i < unit.size(); ++i)
            same = known.name[i] == lower(unit[i]);
        if (same) return known.millimetres;
    }
    return 0.0;
}

}  // namespace corvane::part
