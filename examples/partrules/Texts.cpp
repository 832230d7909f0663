#include "Texts.h"

#include <iterator>

namespace partrules {
namespace {

constexpr corvane::StringTableEntry kEntries[] = {
    {kLargestSize, u"Largest size along x, y and z (mm)"},
    {kMayBeTurned, u"The part may be turned"},
    {kThinnestWall, u"Thinnest wall (mm)"},
    {kMaterial, u"Material"},
    {kLargestMass, u"Largest mass (g)"},
    {kDensities, u"Densities (g/cm3)"},
};

}  // namespace

const corvane::StringTable kTexts{kEntries, std::size(kEntries)};

}  // namespace partrules
