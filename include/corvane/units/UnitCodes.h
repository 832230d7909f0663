#pragma once

#include <cstdint>

// The codes that CQORUnitConvertor takes, as they pass between separately built modules. Each
// converts to the number that an operation expects.

/// What a value is. Every other number counts as a length (or its area) too.
enum QORUnitKind_e : std::int32_t {
    QORUnitKind_None = 0,  ///< A bare number: never converted.
    QORUnitKind_Length = 1,
    QORUnitKind_Angle = 2,
};

/// Units of length, and of area: the code of an area is that of the length whose square it is.
enum QORLengthUnit_e : std::int32_t {
    QORLengthUnit_Millimetre = 0,
    QORLengthUnit_Centimetre = 1,
    QORLengthUnit_Metre = 2,
    QORLengthUnit_Inch = 3,
    QORLengthUnit_Foot = 4,
    QORLengthUnit_InchAgain = 5,  ///< The inch once more: the same results.
    QORLengthUnit_Angstrom = 6,
    QORLengthUnit_Nanometre = 7,
    QORLengthUnit_Micrometre = 8,
    QORLengthUnit_Mil = 9,  ///< A thousandth of an inch.
    QORLengthUnit_Microinch = 10,
};

/// Units of angle. Every other number counts as radians too.
enum QORAngleUnit_e : std::int32_t {
    QORAngleUnit_Degree = 0,
    QORAngleUnit_MinuteOfArc = 1,
    QORAngleUnit_SecondOfArc = 2,
    QORAngleUnit_Radian = 3,
};

/// Units of mass.
enum QORMassUnit_e : std::int32_t {
    QORMassUnit_Milligram = 1,
    QORMassUnit_Gram = 2,
    QORMassUnit_Kilogram = 3,
    QORMassUnit_Pound = 4,
};

/// Units of density.
enum QORDensityUnit_e : std::int32_t {
    QORDensityUnit_KilogramPerCubicMetre = 1,
    QORDensityUnit_PoundPerCubicInch = 2,
};
