#pragma once

namespace collector::seed {

inline constexpr const char16_t* kFlangingSource =
    u"EN 10025-2:2004, minimum bend radii for cold flanging of flat products, up to 90 degrees";

/// Bounds of the thickness ranges in mm: above one, up to the next.
inline constexpr double kFlangingThickness[] = {1, 1.5, 2.5, 3,  4,  5,  6, 7,
                                                8, 10,  12,  14, 16, 18, 20};

/// One radius in mm for each range.
struct RadiusTable {
    const char16_t* bendGroup;
    const char16_t* direction;
    double radius[14];
};

inline constexpr RadiusTable kRadiiInMillimetres[] = {
    {u"S235", u"across", {1.6, 2.5, 3, 5, 6, 8, 10, 12, 16, 20, 25, 28, 36, 40}},
    {u"S235", u"along", {1.6, 2.5, 3, 6, 8, 10, 12, 16, 20, 25, 28, 32, 40, 45}},
    {u"S275", u"across", {2, 3, 4, 5, 8, 10, 12, 16, 20, 25, 28, 32, 40, 45}},
    {u"S275", u"along", {2, 3, 4, 6, 10, 12, 16, 20, 25, 32, 36, 40, 45, 50}},
    {u"S355", u"across", {2.5, 4, 5, 6, 8, 10, 12, 16, 20, 25, 32, 36, 45, 50}},
    {u"S355", u"along", {2.5, 4, 5, 8, 10, 12, 16, 20, 25, 32, 36, 40, 50, 63}},
};

/// A radius as a multiple of the thickness, whatever the direction.
struct RadiusFactor {
    const char16_t* bendGroup;
    double over;
    double upTo;
    double factor;
    const char16_t* source;
};

inline constexpr const char16_t* kColdFormingSource =
    u"EN 10149-2:2013, recommended minimum inside bend radii, up to 90 degrees; also Salzgitter "
    u"Flachstahl, High-strength steels for cold forming, thermomechanically rolled";
inline constexpr const char16_t* kAluminiumSource =
    u"EN 485-2:2007, recommended minimum bend radii, 90 degrees; also Euralliage, 5754, 6061, 6082";
/// Those of a temper that the freely readable tables do not agree about.
inline constexpr const char16_t* kNaturallyAgedSource =
    u"EN 485-2:2007, recommended minimum bend radii, 90 degrees";

/// 1.5 mm itself is the least thickness here, so the bound is moved by more than the lookup takes
/// for a rounding.
inline constexpr double kFrom1_5 = 1.5 - 2e-6;

inline constexpr RadiusFactor kRadiiByThickness[] = {
    {u"S315MC", kFrom1_5, 3, 0.25, kColdFormingSource},
    {u"S315MC", 3, 6, 0.5, kColdFormingSource},
    {u"S315MC", 6, 20, 1, kColdFormingSource},
    {u"S355MC", kFrom1_5, 3, 0.25, kColdFormingSource},
    {u"S355MC", 3, 6, 0.5, kColdFormingSource},
    {u"S355MC", 6, 20, 1, kColdFormingSource},
    {u"S420MC", kFrom1_5, 3, 0.5, kColdFormingSource},
    {u"S420MC", 3, 6, 1, kColdFormingSource},
    {u"S420MC", 6, 20, 1.5, kColdFormingSource},
    {u"S460MC", kFrom1_5, 3, 0.5, kColdFormingSource},
    {u"S460MC", 3, 6, 1, kColdFormingSource},
    {u"S460MC", 6, 16, 1.5, kColdFormingSource},
    {u"S500MC", kFrom1_5, 3, 1, kColdFormingSource},
    {u"S500MC", 3, 6, 1.5, kColdFormingSource},
    {u"S500MC", 6, 16, 2, kColdFormingSource},
    {u"S550MC", kFrom1_5, 3, 1, kColdFormingSource},
    {u"S550MC", 3, 6, 1.5, kColdFormingSource},
    {u"S550MC", 6, 16, 2, kColdFormingSource},
    {u"S600MC", kFrom1_5, 3, 1, kColdFormingSource},
    {u"S600MC", 3, 6, 1.5, kColdFormingSource},
    {u"S600MC", 6, 16, 2, kColdFormingSource},
    {u"S650MC", kFrom1_5, 3, 1.5, kColdFormingSource},
    {u"S650MC", 3, 6, 2, kColdFormingSource},
    {u"S650MC", 6, 16, 2.5, kColdFormingSource},
    {u"S700MC", kFrom1_5, 3, 1.5, kColdFormingSource},
    {u"S700MC", 3, 6, 2, kColdFormingSource},
    {u"S700MC", 6, 16, 2.5, kColdFormingSource},

    {u"EN AW-5754 H111", 0.5, 1.5, 0.5, kAluminiumSource},
    {u"EN AW-5754 H111", 1.5, 6, 1, kAluminiumSource},
    {u"EN AW-5754 H22", 0.5, 1.5, 1, kAluminiumSource},
    {u"EN AW-5754 H22", 1.5, 6, 1.5, kAluminiumSource},
    {u"EN AW-6061 T6", 0.4, 1.5, 2.5, kAluminiumSource},
    {u"EN AW-6061 T6", 1.5, 3, 3.5, kAluminiumSource},
    {u"EN AW-6061 T6", 3, 6, 4, kAluminiumSource},
    {u"EN AW-6082 T4", 0.4, 1.5, 1.5, kNaturallyAgedSource},
    {u"EN AW-6082 T4", 1.5, 3, 2, kNaturallyAgedSource},
    {u"EN AW-6082 T4", 3, 6, 3, kNaturallyAgedSource},
    {u"EN AW-6082 T6", 0.4, 1.5, 2.5, kAluminiumSource},
    {u"EN AW-6082 T6", 1.5, 3, 3.5, kAluminiumSource},
    {u"EN AW-6082 T6", 3, 6, 4.5, kAluminiumSource},
};

}  // namespace collector::seed
