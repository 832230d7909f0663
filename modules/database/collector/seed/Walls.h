#pragma once

namespace collector::seed {

struct Wall {
    const char16_t* process;
    const char16_t* material;
    double minimum;  ///< mm
    const char16_t* source;
};

/// The lower ends of the ranges in this guide, which gives them in inches.
inline constexpr const char16_t* kMouldingSource =
    u"Proto Labs, Design Guidelines for injection molding, wall thickness";
inline constexpr const char16_t* kDieCastingSource =
    u"DeGarmo, Black, Kohser: Materials and Processes in Manufacturing, minimum sections of die "
    u"castings";
inline constexpr const char16_t* kPrintingSource =
    u"3D Hubs, 3D printing geometry restrictions, minimum wall thickness";
inline constexpr const char16_t* kMachiningSource =
    u"3D Hubs, CNC machining design guide, recommended minimum wall thickness";
inline constexpr const char16_t* kColdRolledSource = u"EN 10131:2006, least thickness of the scope";
inline constexpr const char16_t* kAluminiumSheetSource =
    u"EN 485-4:1993, least thickness of the scope";

inline constexpr double kInch = 25.4;

inline constexpr Wall kWalls[] = {
    {u"injection moulding", u"ABS", 0.045 * kInch, kMouldingSource},
    {u"injection moulding", u"acetal", 0.030 * kInch, kMouldingSource},
    {u"injection moulding", u"acrylic", 0.025 * kInch, kMouldingSource},
    {u"injection moulding", u"liquid crystal polymer", 0.030 * kInch, kMouldingSource},
    {u"injection moulding", u"long-fibre reinforced plastic", 0.075 * kInch, kMouldingSource},
    {u"injection moulding", u"nylon", 0.030 * kInch, kMouldingSource},
    {u"injection moulding", u"polycarbonate", 0.040 * kInch, kMouldingSource},
    {u"injection moulding", u"polyester", 0.025 * kInch, kMouldingSource},
    {u"injection moulding", u"polyethylene", 0.030 * kInch, kMouldingSource},
    {u"injection moulding", u"polyphenylene sulfide", 0.020 * kInch, kMouldingSource},
    {u"injection moulding", u"polypropylene", 0.025 * kInch, kMouldingSource},
    {u"injection moulding", u"polystyrene", 0.035 * kInch, kMouldingSource},
    {u"injection moulding", u"polyurethane", 0.080 * kInch, kMouldingSource},

    {u"die casting", u"aluminium", 0.89, kDieCastingSource},
    {u"die casting", u"brass", 1.27, kDieCastingSource},
    {u"die casting", u"bronze", 1.27, kDieCastingSource},
    {u"die casting", u"magnesium", 1.27, kDieCastingSource},
    {u"die casting", u"zinc", 0.63, kDieCastingSource},

    {u"FDM", u"any", 0.8, kPrintingSource},
    {u"SLA", u"any", 0.5, kPrintingSource},
    {u"SLS", u"any", 0.7, kPrintingSource},
    {u"DMLS", u"any", 0.4, kPrintingSource},
    {u"material jetting", u"any", 1, kPrintingSource},
    {u"binder jetting", u"any", 2, kPrintingSource},

    {u"sheet metal", u"cold rolled steel", 0.35, kColdRolledSource},
    {u"sheet metal", u"aluminium", 0.2, kAluminiumSheetSource},

    {u"machining", u"metal", 0.8, kMachiningSource},
    {u"machining", u"plastic", 1.5, kMachiningSource},
};

}  // namespace collector::seed
