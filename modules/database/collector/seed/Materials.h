#pragma once

#include <span>

namespace collector::seed {

/// Strengths in MPa, the least that the standard promises; 0 where it promises none.
struct MaterialRow {
    const char16_t* name;
    const char16_t* bendGroup;
    double yield;
    double tensile;
    double density = 0;  ///< kg/m3; 0 is that of the family.
};

/// Materials of one standard.
struct MaterialFamily {
    const char16_t* group;
    double density;        ///< kg/m3
    double youngsModulus;  ///< GPa
    const char16_t* source;
    std::span<const MaterialRow> rows;
};

inline constexpr MaterialRow kStructuralSteels[] = {
    {u"S235JR", u"S235", 235, 360}, {u"S235J0", u"S235", 235, 360}, {u"S235J2", u"S235", 235, 360},
    {u"S275JR", u"S275", 275, 410}, {u"S275J0", u"S275", 275, 410}, {u"S275J2", u"S275", 275, 410},
    {u"S355JR", u"S355", 355, 470}, {u"S355J0", u"S355", 355, 470}, {u"S355J2", u"S355", 355, 470},
    {u"S355K2", u"S355", 355, 470},
};

inline constexpr MaterialRow kColdFormingSteels[] = {
    {u"S315MC", u"S315MC", 315, 390}, {u"S355MC", u"S355MC", 355, 430},
    {u"S420MC", u"S420MC", 420, 480}, {u"S460MC", u"S460MC", 460, 520},
    {u"S500MC", u"S500MC", 500, 550}, {u"S550MC", u"S550MC", 550, 600},
    {u"S600MC", u"S600MC", 600, 650}, {u"S650MC", u"S650MC", 650, 700},
    {u"S700MC", u"S700MC", 700, 750},
};

// The standard bounds the yield strength of these from above only.
inline constexpr MaterialRow kDeepDrawingSteels[] = {
    {u"DC01", u"", 0, 270},
    {u"DC03", u"", 0, 270},
    {u"DC04", u"", 0, 270},
};

inline constexpr MaterialRow kStainlessSteels[] = {
    {u"1.4301", u"", 230, 540, 7900}, {u"1.4307", u"", 220, 520, 7900},
    {u"1.4401", u"", 240, 530, 8000}, {u"1.4404", u"", 240, 530, 8000},
    {u"1.4541", u"", 220, 520, 7900}, {u"1.4571", u"", 240, 540, 8000},
};

inline constexpr MaterialRow kAluminiumSheets[] = {
    {u"EN AW-5754 H111", u"EN AW-5754 H111", 80, 190},
    {u"EN AW-5754 H22", u"EN AW-5754 H22", 130, 220},
    {u"EN AW-6061 T6", u"EN AW-6061 T6", 240, 290},
    {u"EN AW-6082 T4", u"EN AW-6082 T4", 110, 205},
    {u"EN AW-6082 T6", u"EN AW-6082 T6", 260, 310},
};

inline constexpr MaterialFamily kMaterials[] = {
    {u"steel", 7850, 210,
     u"EN 10025-2:2004, table 7, thickness 3 to 16 mm; modulus EN 1993-1-1, 3.2.6; density "
     u"EN 1993-1-2, 3.2.2",
     kStructuralSteels},
    {u"steel", 7850, 210,
     u"EN 10149-2:2013, mechanical properties, thickness 3 to 8 mm; modulus "
     u"EN 1993-1-1, 3.2.6; density EN 1993-1-2, 3.2.2",
     kColdFormingSteels},
    {u"steel", 7850, 210,
     u"EN 10130:2006, mechanical properties; modulus EN 1993-1-1, 3.2.6; density "
     u"EN 1993-1-2, 3.2.2",
     kDeepDrawingSteels},
    {u"stainless steel", 0, 200,
     u"EN 10088-2:2005, austenitic steels, cold rolled strip; density and modulus EN 10088-1",
     kStainlessSteels},
    {u"aluminium", 2700, 70,
     u"EN 485-2:2007, sheet of 1.5 to 6 mm; density and modulus: design values of "
     u"EN 1999-1-1, 3.2.5",
     kAluminiumSheets},
};

}  // namespace collector::seed
