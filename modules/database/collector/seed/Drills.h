#pragma once

// Diameters of twist drills in hundredths of a millimetre: small numbers without rounding.

namespace collector::seed {

inline constexpr const char16_t* kJobberDrills = u"ISO 235:2016, jobber series; DIN 338";
inline constexpr const char16_t* kTaperShankDrills = u"ISO 235:2016, taper shank; DIN 345";

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
    const char16_t* source;
};

inline constexpr DrillRange kDrillRanges[] = {
    {100, 300, 5, kJobberDrills},        {310, 1400, 10, kJobberDrills},
    {1425, 1600, 25, kJobberDrills},     {1625, 3200, 25, kTaperShankDrills},
    {3250, 5050, 50, kTaperShankDrills}, {5100, 10000, 100, kTaperShankDrills},
};

}  // namespace collector::seed
