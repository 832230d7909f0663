#pragma once

#include <optional>
#include <vector>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

namespace corvane {

/// A point in the part's coordinates, in mm.
struct Point {
    double x = 0;  ///< mm
    double y = 0;  ///< mm
    double z = 0;  ///< mm
};

/// Where in the part something was found.
struct Place {
    /// What the place is.
    enum class Kind {
        Point,
        Box,       ///< Along the axes.
        Polyline,  ///< Open; a closed one ends with its first point.
        Facets,    ///< A set of triangles.
        Faces,     ///< A set of faces of the part's boundary.
    };

    Kind kind = Kind::Point;  ///< What the points and faces are.
    CStringW label;           ///< A few words that a viewer shows beside it; may be empty.
    /// Point: one. Box: its least and its greatest corner. Polyline: two or more in their order.
    /// Facets and Faces: three for each triangle; Faces may leave them out.
    std::vector<Point> points;
    std::vector<QorLong> faces;  ///< Faces: the numbers of the part's faces, from 1.
};

/// One thing that a rule found in a part: what is wrong, or, as a note, what is worth knowing.
struct Finding {
    CStringW message;                ///< In the user's words.
    std::optional<double> measured;  ///< What the part has, in `unit`.
    std::optional<double> limit;     ///< What the rule asks for, in `unit`.
    CStringW unit;                   ///< "mm", "deg" and the like; empty for a plain number.
    std::vector<Place> places;       ///< Empty when it concerns the part as a whole.
    /// What tells this finding from the others of its rule, run after run. When it is empty, a host
    /// makes it with FingerprintOf.
    CStringW fingerprint;
    bool isNote = false;  ///< A note is shown and fails nothing.
};

/// A fingerprint of 16 hexadecimal digits, made from the rule's name, from whether it is a note,
/// from the unit, from the message without its numbers, and from where the places lie to about half
/// a millimetre. So it stays the same when the part is saved again with rounded coordinates, when
/// the measured value or the limit changes, when facets or places come in another order, and when
/// other findings come and go. Two findings of one rule at one place share it unless their
/// messages differ in more than numbers. Labels, and the finding's own fingerprint, do not count.
CORVANE_EXPORT CStringW FingerprintOf(const CStringW& ruleName, const Finding& finding);

}  // namespace corvane
