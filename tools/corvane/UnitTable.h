#pragma once

#include <span>
#include <string_view>

#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

enum class Quantity { Length, Angle, Area, Mass, Density };

/// A unit as a person names it and as the library does.
struct Unit {
    Quantity quantity;
    QorLong code;
    const char16_t* symbol;
    const char16_t* name;
};

/// All units, by quantity and code.
std::span<const Unit> allUnits();

/// The unit of a symbol or a name, or null. Case counts: "Mg" is no "mg". The other signs in use
/// serve too: "mm²" and "mm^2" for "mm2", "µm" for "um", "Å" for "A", "°" for "deg", "meter" for
/// "metre".
const Unit* findUnit(std::u16string_view text);

CStringW quantityName(Quantity quantity);

/// The value in another unit of the same quantity.
double convert(double value, const Unit& from, const Unit& to);
