#pragma once

#include <string_view>
#include <vector>

#include <corvane/database/Status.h>

namespace qor_db {

/// A standard twist drill.
struct DrillSize {
    double diameter = 0;     ///< mm
    bool preferred = false;  ///< A whole or half millimetre, in stock nearly everywhere.
    CStringW source;         ///< Where the row comes from.
};

/// A metric ISO thread and the drill for its tapped hole.
struct ThreadHole {
    CStringW designation;  ///< As in drawings: "M6", "M8x1".
    CStringW series;       ///< "coarse" or "fine"
    double nominal = 0;    ///< mm
    double pitch = 0;      ///< mm
    double tapDrill = 0;   ///< mm
    CStringW source;       ///< Where the row comes from.
};

/// How wide the clearance hole of a bolt is.
enum class ClearanceFit { Fine, Medium, Coarse };

/// The clearance hole of a metric bolt.
struct ClearanceHole {
    double nominal = 0;   ///< The bolt's diameter, mm.
    double diameter = 0;  ///< The hole, mm.
    CStringW source;      ///< Where the row comes from.
};

/// A material with its limits. A limit that the source leaves open is 0.
struct Material {
    CStringW name;               ///< As in the standard: "S235JR", "EN AW-5754 H22".
    CStringW group;              ///< "steel", "stainless steel", "aluminium"
    CStringW bendGroup;          ///< Under which name bendRadius knows it; may be empty.
    double density = 0;          ///< kg/m3
    double youngsModulus = 0;    ///< GPa
    double yieldStrength = 0;    ///< MPa, minimum
    double tensileStrength = 0;  ///< MPa, minimum
    CStringW source;             ///< Where the row comes from.
};

/// How a bend lies to the rolling direction of the sheet.
enum class BendDirection { Across, Along };

/// The least inner radius at which a sheet bends without cracking.
struct BendRadius {
    CStringW bendGroup;    ///< The group of materials that it holds for.
    double thickness = 0;  ///< mm, as asked for
    double radius = 0;     ///< mm
    CStringW source;       ///< Where the row comes from.
};

/// The least wall that a process makes.
struct WallThickness {
    CStringW process;    ///< Such as "fdm" or "injection moulding".
    CStringW material;   ///< "any" when the process's limit holds for every material.
    double minimum = 0;  ///< mm
    CStringW source;     ///< Where the row comes from.
};

/// The tables of reference data that rules look up. Names are compared without regard to the case
/// of ASCII letters. A row that isn't there is ErrorCode::NotFound, a length that is negative or
/// not a number ErrorCode::BadParameter.
class IReferenceData {
public:
    /// Drills in ascending order of diameter.
    virtual Outcome<std::vector<DrillSize>> drillSizes(bool preferredOnly) = 0;
    /// The drill whose diameter is closest; of two equally close ones the smaller.
    virtual Outcome<DrillSize> nearestDrill(double diameter, bool preferredOnly) = 0;

    /// The thread of that designation, such as "M6" or "M8x1".
    virtual Outcome<ThreadHole> thread(std::u16string_view designation) = 0;
    /// Threads of this nominal diameter, coarsest pitch first.
    virtual Outcome<std::vector<ThreadHole>> threads(double nominal) = 0;
    /// The clearance hole of a bolt of this nominal diameter.
    virtual Outcome<ClearanceHole> clearanceHole(double nominal, ClearanceFit fit) = 0;

    /// Materials in the order of their names.
    virtual Outcome<std::vector<Material>> materials() = 0;
    /// The material of that name.
    virtual Outcome<Material> material(std::u16string_view name) = 0;

    /// `material` names a material or a bend group.
    virtual Outcome<BendRadius> bendRadius(std::u16string_view material, double thickness,
                                           BendDirection direction) = 0;

    /// The row of this material, else the one for "any" material.
    virtual Outcome<WallThickness> minimumWall(std::u16string_view process,
                                               std::u16string_view material) = 0;
    /// All rows, in the order of process and material.
    virtual Outcome<std::vector<WallThickness>> minimumWalls() = 0;

protected:
    ~IReferenceData() = default;
};

}  // namespace qor_db
