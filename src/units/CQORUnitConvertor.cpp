#include <cstddef>
#include <cstdint>

#include <corvane/units/CQORUnitConvertor.h>

#include "units/Factors.h"

namespace {

using corvane::units::kAngleUnits;
using corvane::units::kDensityRatios;
using corvane::units::kLengthUnits;
using corvane::units::kMassRatios;
using corvane::units::LengthUnit;
using corvane::units::Ratio;

// The row of a code, or null. A negative code is far beyond the table too.
template <typename Row, std::size_t Size>
const Row* rowOf(const Row (&table)[Size], QorLong code) {
    const auto index = static_cast<std::uint32_t>(code);
    return index < Size ? table + index : nullptr;
}

double perMetreOrRadian(QorLong unit, QorLong kind) {
    if (kind == QORUnitKind_None) return 1;
    if (kind == QORUnitKind_Angle) {
        const double* factor = rowOf(kAngleUnits, unit);
        return factor ? *factor : 1;
    }
    const LengthUnit* row = rowOf(kLengthUnits, unit);
    return row ? row->perMetre : 1;
}

const LengthUnit& areaUnit(QorLong unit, QorLong kind) {
    const bool isArea = kind != QORUnitKind_None && kind != QORUnitKind_Angle;
    const LengthUnit* row = isArea ? rowOf(kLengthUnits, unit) : nullptr;
    return row ? *row : kLengthUnits[QORLengthUnit_Metre];
}

// The operations are built on these and not on each other, because a call through an exported name
// costs more than the arithmetic.

double fromMetres(double value, QorLong unit, QorLong kind) {
    return value * perMetreOrRadian(unit, kind);
}

double inMetres(double value, QorLong unit, QorLong kind) {
    return value / perMetreOrRadian(unit, kind);
}

double fromSquareMetres(double value, QorLong unit, QorLong kind) {
    const LengthUnit& row = areaUnit(unit, kind);
    return value * row.areaFactor * row.areaFactorAgain;
}

double inSquareMetres(double value, QorLong unit, QorLong kind) {
    return value / areaUnit(unit, kind).perSquareMetre;
}

// The division takes most of the time, and a CAD system's metres need none.
void convertAll(std::span<double> values, double over, double times, double timesAgain) {
    if (over == 1) {
        for (double& value : values)
            value = value * times * timesAgain;
    } else {
        for (double& value : values)
            value = value / over * times * timesAgain;
    }
}

// The codes of these tables count from 1.
template <std::size_t Size>
double converted(double value, const Ratio (&ratios)[Size][Size], QorLong from, QorLong to) {
    const std::uint32_t row = static_cast<std::uint32_t>(from) - 1;
    const std::uint32_t column = static_cast<std::uint32_t>(to) - 1;
    if (row >= Size || column >= Size) return 0.0;
    const Ratio& ratio = ratios[row][column];
    return value * ratio.times / ratio.over;
}

}  // namespace

CQORUnitConvertor::~CQORUnitConvertor() = default;

double CQORUnitConvertor::ConversionFromMeters(double value, QorLong unit, QorLong kind) const {
    return fromMetres(value, unit, kind);
}

double CQORUnitConvertor::ConversionInMeters(double value, QorLong unit, QorLong kind) const {
    return inMetres(value, unit, kind);
}

double CQORUnitConvertor::ConversionFromOneUnitToAnother(double value, QorLong kind,
                                                         QorLong fromUnit, QorLong toUnit) const {
    return fromMetres(inMetres(value, fromUnit, kind), toUnit, kind);
}

double CQORUnitConvertor::ConversionFromSquareMeters(double value, QorLong unit,
                                                     QorLong kind) const {
    return fromSquareMetres(value, unit, kind);
}

double CQORUnitConvertor::ConversionInSquareMeters(double value, QorLong unit, QorLong kind) const {
    return inSquareMetres(value, unit, kind);
}

double CQORUnitConvertor::ConversionFromOneUnitToAnotherForArea(double value, QorLong kind,
                                                                QorLong fromUnit,
                                                                QorLong toUnit) const {
    return fromSquareMetres(inSquareMetres(value, fromUnit, kind), toUnit, kind);
}

void CQORUnitConvertor::ConvertValues(std::span<double> values, QorLong kind, QorLong fromUnit,
                                      QorLong toUnit) const {
    convertAll(values, perMetreOrRadian(fromUnit, kind), perMetreOrRadian(toUnit, kind), 1);
}

void CQORUnitConvertor::ConvertValuesForArea(std::span<double> values, QorLong kind,
                                             QorLong fromUnit, QorLong toUnit) const {
    const LengthUnit& to = areaUnit(toUnit, kind);
    convertAll(values, areaUnit(fromUnit, kind).perSquareMetre, to.areaFactor, to.areaFactorAgain);
}

double CQORUnitConvertor::ConversionFromOneUnitToAnotherForMass(double value, QorLong fromUnit,
                                                                QorLong toUnit) const {
    return converted(value, kMassRatios, fromUnit, toUnit);
}

double CQORUnitConvertor::ConversionFromOneUnitToAnotherForDensity(double value, QorLong fromUnit,
                                                                   QorLong toUnit) const {
    return converted(value, kDensityRatios, fromUnit, toUnit);
}
