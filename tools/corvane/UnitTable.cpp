#include "UnitTable.h"

#include <algorithm>
#include <utility>

#include <corvane/units/CQORUnitConvertor.h>

#include "language/Messages.h"

namespace {

constexpr Unit kUnits[] = {
    {Quantity::Length, QORLengthUnit_Millimetre, u"mm", u"millimetre"},
    {Quantity::Length, QORLengthUnit_Centimetre, u"cm", u"centimetre"},
    {Quantity::Length, QORLengthUnit_Metre, u"m", u"metre"},
    {Quantity::Length, QORLengthUnit_Inch, u"in", u"inch"},
    {Quantity::Length, QORLengthUnit_Foot, u"ft", u"foot"},
    {Quantity::Length, QORLengthUnit_InchAgain, u"in", u"inch"},
    {Quantity::Length, QORLengthUnit_Angstrom, u"A", u"angstrom"},
    {Quantity::Length, QORLengthUnit_Nanometre, u"nm", u"nanometre"},
    {Quantity::Length, QORLengthUnit_Micrometre, u"um", u"micrometre"},
    {Quantity::Length, QORLengthUnit_Mil, u"mil", u"thousandth of an inch"},
    {Quantity::Length, QORLengthUnit_Microinch, u"uin", u"microinch"},
    {Quantity::Angle, QORAngleUnit_Degree, u"deg", u"degree"},
    {Quantity::Angle, QORAngleUnit_MinuteOfArc, u"arcmin", u"minute of arc"},
    {Quantity::Angle, QORAngleUnit_SecondOfArc, u"arcsec", u"second of arc"},
    {Quantity::Angle, QORAngleUnit_Radian, u"rad", u"radian"},
    {Quantity::Area, QORLengthUnit_Millimetre, u"mm2", u"square millimetre"},
    {Quantity::Area, QORLengthUnit_Centimetre, u"cm2", u"square centimetre"},
    {Quantity::Area, QORLengthUnit_Metre, u"m2", u"square metre"},
    {Quantity::Area, QORLengthUnit_Inch, u"in2", u"square inch"},
    {Quantity::Area, QORLengthUnit_Foot, u"ft2", u"square foot"},
    {Quantity::Area, QORLengthUnit_InchAgain, u"in2", u"square inch"},
    {Quantity::Area, QORLengthUnit_Angstrom, u"A2", u"square angstrom"},
    {Quantity::Area, QORLengthUnit_Nanometre, u"nm2", u"square nanometre"},
    {Quantity::Area, QORLengthUnit_Micrometre, u"um2", u"square micrometre"},
    {Quantity::Area, QORLengthUnit_Mil, u"mil2", u"square mil"},
    {Quantity::Area, QORLengthUnit_Microinch, u"uin2", u"square microinch"},
    {Quantity::Mass, QORMassUnit_Milligram, u"mg", u"milligram"},
    {Quantity::Mass, QORMassUnit_Gram, u"g", u"gram"},
    {Quantity::Mass, QORMassUnit_Kilogram, u"kg", u"kilogram"},
    {Quantity::Mass, QORMassUnit_Pound, u"lb", u"pound"},
    {Quantity::Density, QORDensityUnit_KilogramPerCubicMetre, u"kg/m3",
     u"kilogram per cubic metre"},
    {Quantity::Density, QORDensityUnit_PoundPerCubicInch, u"lb/in3", u"pound per cubic inch"},
};

// The micro sign is the Greek letter in some fonts and keyboards, and the angstrom a Swedish
// letter.
constexpr std::pair<const char16_t*, const char16_t*> kSpellings[] = {
    {u"\u00B2", u"2"}, {u"\u00B3", u"3"},   {u"^", u""},
    {u"\u00B5", u"u"}, {u"\u03BC", u"u"},   {u"\u00C5", u"A"},
    {u"\u212B", u"A"}, {u"\u00B0", u"deg"}, {u"meter", u"metre"},
};

}  // namespace

std::span<const Unit> allUnits() {
    return kUnits;
}

const Unit* findUnit(std::u16string_view text) {
    CStringW plain = text;
    for (const auto& [spelling, usual] : kSpellings)
        plain.Replace(spelling, usual);
    const auto unit = std::ranges::find_if(
        kUnits, [&plain](const Unit& each) { return plain == each.symbol || plain == each.name; });
    return unit == std::end(kUnits) ? nullptr : unit;
}

CStringW quantityName(Quantity quantity) {
    switch (quantity) {
        case Quantity::Length:
            return tr("length");
        case Quantity::Angle:
            return tr("angle");
        case Quantity::Area:
            return tr("area");
        case Quantity::Mass:
            return tr("mass");
        case Quantity::Density:
            break;
    }
    return tr("density");
}

double convert(double value, const Unit& from, const Unit& to) {
    const CQORUnitConvertor by;
    switch (from.quantity) {
        case Quantity::Length:
            return by.ConversionFromOneUnitToAnother(value, QORUnitKind_Length, from.code, to.code);
        case Quantity::Angle:
            return by.ConversionFromOneUnitToAnother(value, QORUnitKind_Angle, from.code, to.code);
        case Quantity::Area:
            return by.ConversionFromOneUnitToAnotherForArea(value, QORUnitKind_Length, from.code,
                                                            to.code);
        case Quantity::Mass:
            return by.ConversionFromOneUnitToAnotherForMass(value, from.code, to.code);
        case Quantity::Density:
            break;
    }
    return by.ConversionFromOneUnitToAnotherForDensity(value, from.code, to.code);
}
