#pragma once

#include <corvane/units/UnitCodes.h>

// The factors of all units, in the order of their codes. Modules and stored results agree on these
// doubles, so none of them is replaced by a more exact one or computed from another. A factor of 1
// leaves every double as it is.

namespace corvane::units {

struct LengthUnit {
    double perMetre;
    // A value in square metres is multiplied by both in turn: one product of the two would round
    // differently.
    double areaFactor;
    double areaFactorAgain;
    double perSquareMetre;  // for the way into square metres
};

inline constexpr double kInches = 39.370078740157;
inline constexpr double kFeet = 3.2808398950131;
inline constexpr double kMils = 39370.078740157;
inline constexpr double kMicroinches = 39370078.740157;
inline constexpr double kSquareInches = 1550.003100006162;

// By QORLengthUnit_e.
inline constexpr LengthUnit kLengthUnits[] = {
    {1000, 1e6, 1, 1e6},
    {100, 1e4, 1, 1e4},
    {1, 1, 1, 1},
    {kInches, kInches, kInches, kSquareInches},
    {kFeet, kFeet, kFeet, 10.76391041670957},
    {kInches, kInches, kInches, kSquareInches},
    {1e10, 1e10, 1e10, 1e20},
    {1e9, 1e18, 1, 1e18},
    {1e6, 1e12, 1, 1e12},
    {kMils, kMils, kMils, 1550003100.006162},
    {kMicroinches, kMicroinches, kMicroinches, 1550003100006162.2},
};

// By QORAngleUnit_e, per radian.
inline constexpr double kAngleUnits[] = {57.295779513082, 3437.7467707849, 206264.8062471};

// A value is multiplied by one and divided by the other; one of the two is 1.
struct Ratio {
    double times;
    double over;
};

// From row to column, by QORMassUnit_e, which counts from 1.
inline constexpr Ratio kMassRatios[4][4] = {
    {{1, 1}, {1, 1000}, {1, 1000000}, {2.2046224760379583e-06, 1}},
    {{1000, 1}, {1, 1}, {1, 1000}, {0.0022046224760379584, 1}},
    {{1000000, 1}, {1000, 1}, {1, 1}, {2.2046224760379585, 1}},
    {{453592.4, 1}, {453.5924, 1}, {0.4535924, 1}, {1, 1}},
};

// From row to column, by QORDensityUnit_e, which counts from 1.
inline constexpr Ratio kDensityRatios[2][2] = {
    {{1, 1}, {3.6127292e-05, 1}},
    {{27679.904710191, 1}, {1, 1}},
};

}  // namespace corvane::units
