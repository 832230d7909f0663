#pragma once

// Diameters of twist drills in hundredths of a millimetre: small numbers without rounding.

namespace collector::seed {

inline constexpr const char16_t* kDrillSource =
    u"BS 328, diameters of twist drills, listed in Wikipedia, Drill bit sizes";
inline constexpr const char16_t* kTapDrillSource =
    u"ISO 2306:1972, drills for use prior to tapping";

/// Whole and half millimetres.
inline constexpr int kPreferredDrillStep = 50;

/// Below 1 mm the steps alternate.
inline constexpr int kSmallDrills[] = {20, 22, 25, 28, 30, 32, 35, 38, 40, 42, 45,
                                       48, 50, 52, 55, 58, 60, 62, 65, 68, 70, 72,
                                       75, 78, 80, 82, 85, 88, 90, 92, 95, 98};

struct DrillRange {
    int first;
    int last;
    int step;
};

inline constexpr DrillRange kDrillRanges[] = {
    {100, 300, 5},
    {310, 1400, 10},
    {1425, 2500, 25},
};

}  // namespace collector::seed
