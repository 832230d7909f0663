#pragma once

#include <memory>
#include <string>
#include <vector>

#include "corvane/base/ExportMarks.h"
#include "corvane/part/Features.h"
#include "corvane/part/Model.h"
#include "corvane/part/Walls.h"

#ifdef CORVANE_STATIC_DEFINE
#define CORVANE_PART_EXPORT
#elif defined(corvane_part_EXPORTS)
#define CORVANE_PART_EXPORT CORVANE_EXPORTED
#else
/// Exports a name from the library of parts, or imports it.
#define CORVANE_PART_EXPORT CORVANE_IMPORTED
#endif

/// The part that rules look at: reads a CAD file once and measures it once for all who ask.
namespace corvane::part {

/// A box of any direction. Its sides run along the three axes, the longest first.
struct OrientedBox {
    Vector centre;      ///< its middle
    Vector axes[3];     ///< unit, at right angles
    double sizes[3]{};  ///< in falling order
};

class Part;

/// A part, or why there is none.
struct OpenResult {
    std::shared_ptr<const Part> part;  ///< empty if the file cannot be read
    std::string error;                 ///< why; English
};

/// A part as it was read. Each measure is made when it is first asked for and kept. All operations
/// may be called from several threads, and none throws but std::bad_alloc; what cannot be measured,
/// because the shape is damaged, is empty or zero.
class CORVANE_PART_EXPORT Part {
public:
    /// Reads a STEP, IGES, BREP or STL file; the content says which. `path` is UTF-8. `units`, a
    /// name of corvane/part/LengthUnits.h, holds where the file names no unit of length; empty
    /// means millimetres. The same file with the same units gives the same part for as long as its
    /// size and time of change stay and somebody holds it or it is one of the last few that were
    /// opened.
    static OpenResult open(const std::string& path, const std::string& units = {});

    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part();

    /// Solids, faces and edges.
    [[nodiscard]] const Model& model() const;

    /// The model's damages and those that only a thorough check of every face finds.
    [[nodiscard]] const std::vector<Damage>& damages() const;

    /// The surface as triangles, as near to it as a two-thousandth of the part's size. Empty where
    /// the shape is too damaged for them, or an edge bends more than 50,000 times.
    [[nodiscard]] const Mesh& mesh() const;

    /// The smallest box along the axes that holds the part.
    [[nodiscard]] const Box& box() const;

    /// The box of least volume among those with a side along a flat face of the part or along its
    /// axes.
    [[nodiscard]] const OrientedBox& smallestBox() const;

    [[nodiscard]] double volume() const;  ///< of all solids, mm3
    [[nodiscard]] double area() const;    ///< of all faces, mm2
    [[nodiscard]] Vector centre() const;  ///< of mass, all solids of one density

    /// How thick the walls are.
    [[nodiscard]] const Walls& walls() const;

    /// Where the air between walls is narrow.
    [[nodiscard]] const Gaps& gaps() const;

    /// How the part leaves a mould whose one half moves along `pull`, of any length. Empty for a
    /// null vector.
    [[nodiscard]] Draft draft(const Vector& pull) const;

    /// The unit direction, among the axes and those of faces, in which a mould of two halves leaves
    /// the least undercut; among equal ones that in which the part is shortest, with its largest
    /// component positive. Null if the part cannot be measured.
    [[nodiscard]] Vector pullDirection() const;

    /// What needs a support when the part is built towards `up`, of any length, from its lowest
    /// point: faces less than `limitAngle` degrees from the horizontal, above 0 to 90, that look
    /// down. The largest first.
    [[nodiscard]] std::vector<Overhang> overhangs(const Vector& up, double limitAngle) const;

    /// The holes of all solids. All operations from here on leave out what a damaged shape does not
    /// tell clearly.
    [[nodiscard]] const std::vector<Hole>& holes() const;
    [[nodiscard]] const std::vector<HolePattern>& holePatterns() const;  ///< groups of equal holes
    [[nodiscard]] const std::vector<Fillet>& fillets() const;  ///< roundings of one radius
    [[nodiscard]] const std::vector<SharpCorner>& sharpCorners()
        const;                                                 ///< inner edges without a rounding
    [[nodiscard]] const std::vector<Pocket>& pockets() const;  ///< hollows with walls around them
    [[nodiscard]] const Turned& turned() const;                ///< whether it is turned
    [[nodiscard]] const SheetMetal& sheetMetal() const;        ///< whether it is of sheet

private:
    struct State;
    explicit Part(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace corvane::part
