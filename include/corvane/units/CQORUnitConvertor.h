#pragma once

#include <span>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/units/UnitCodes.h>

/// Turns lengths, angles, areas, masses and densities from one unit into another.
///
/// Lengths, angles and areas go through metres, radians and square metres, so converting there and
/// back may change the last digits. Nothing is rounded beyond the arithmetic of `double`, and the
/// results are the same bits on every machine. The factors have 13 or 14 digits, so 25.4 mm is
/// close to one inch and not exactly on it. Infinities and NaN pass through.
///
/// No operation reports anything. A length, area or angle whose unit is unknown comes back
/// unchanged; a mass or density whose unit is unknown, on either side, gives 0.0.
///
/// The object has no state: one may serve all threads.
class CORVANE_EXPORT CQORUnitConvertor {
public:
    CQORUnitConvertor() = default;
    CQORUnitConvertor(const CQORUnitConvertor&) = default;
    CQORUnitConvertor& operator=(const CQORUnitConvertor&) = default;
    virtual ~CQORUnitConvertor();

    /// Metres into a QORLengthUnit_e, or radians into a QORAngleUnit_e, as the QORUnitKind_e says.
    double ConversionFromMeters(double value, QorLong unit, QorLong kind) const;
    /// A QORLengthUnit_e into metres, or a QORAngleUnit_e into radians.
    double ConversionInMeters(double value, QorLong unit, QorLong kind) const;
    /// From one unit of length or angle to another. The kind comes before the units here.
    double ConversionFromOneUnitToAnother(double value, QorLong kind, QorLong fromUnit,
                                          QorLong toUnit) const;

    /// Square metres into the square of a QORLengthUnit_e. An angle comes back unchanged.
    double ConversionFromSquareMeters(double value, QorLong unit, QorLong kind) const;
    /// The square of a QORLengthUnit_e into square metres. An angle comes back unchanged.
    double ConversionInSquareMeters(double value, QorLong unit, QorLong kind) const;
    /// From one unit of area to another. The kind comes before the units here.
    double ConversionFromOneUnitToAnotherForArea(double value, QorLong kind, QorLong fromUnit,
                                                 QorLong toUnit) const;

    /// ConversionFromOneUnitToAnother for each value, in place and to the same bits, at a fraction
    /// of the time. From metres or radians: with QORLengthUnit_Metre or QORAngleUnit_Radian.
    void ConvertValues(std::span<double> values, QorLong kind, QorLong fromUnit,
                       QorLong toUnit) const;
    /// ConversionFromOneUnitToAnotherForArea for each value, likewise.
    void ConvertValuesForArea(std::span<double> values, QorLong kind, QorLong fromUnit,
                              QorLong toUnit) const;

    /// From one QORMassUnit_e to another.
    double ConversionFromOneUnitToAnotherForMass(double value, QorLong fromUnit,
                                                 QorLong toUnit) const;
    /// From one QORDensityUnit_e to another.
    double ConversionFromOneUnitToAnotherForDensity(double value, QorLong fromUnit,
                                                    QorLong toUnit) const;
};
