#pragma once

#include <string>
#include <vector>

#include "corvane/part/Model.h"

/// What a shop sees in a part: its holes and their patterns, roundings, inner corners and pockets;
/// and how it is made if it is turned or bent of sheet.
/// Plain values; lengths in millimetres, angles in degrees, faces and edges by their numbers in the
/// model. What does not apply is 0; a distance to something that is not there is `kNone`.
///
/// Sizes of exact shapes come from their surfaces and curves and are as exact as these. Distances
/// to faces are exact for flat faces and parallel cylinders, else within the tolerance of
/// Part::mesh(). Features are numbered from 1 in the order of their first faces, so that the same
/// file gives the same numbers, and a moved or mirrored part too.
namespace corvane::part {

/// A distance to something that is not there.
inline constexpr double kNone = 1e300;

/// How a hole ends. `Other` is a bottom that is neither square, a cone nor a sphere.
enum class HoleBottom { Through, Flat, Conical, Round, Other };

/// One step of a hole around its axis.
struct HoleSection {
    /// What the step is.
    enum class Kind { Cylinder, Cone, Sphere, Rounding };
    Kind kind = Kind::Cylinder;  ///< what it is
    double start = 0.0;          ///< below the mouth
    double length = 0.0;         ///< along the axis
    double startDiameter = 0.0;  ///< at its upper end
    double endDiameter = 0.0;    ///< at its lower end; 0 at a tip
    double angle = 0.0;          ///< Cone: the whole angle
    double turn = 360.0;         ///< degrees that it goes around the axis
    std::vector<int> faces;      ///< of the step
};

/// A round hole: faces around one axis with the material outside, which together go around it by
/// more than half. Coaxial steps that join, such as a counterbore, are one hole; so are the pieces
/// of a bore that a cross bore separates, as long as they hold more material than air. A bore
/// through several walls is one hole for each wall. Ends of slots, corners of pockets, ring grooves
/// and closed voids are no holes; neither is a conical pit wider than 60 degrees.
struct Hole {
    int number = 0;          ///< from 1
    int solid = 0;           ///< number of its solid; 0 in an open shape
    Vector entry;            ///< centre of the mouth, at its outermost end
    Vector axis;             ///< unit, into the material
    double diameter = 0.0;   ///< of the main bore, the narrowest cylinder or slender taper; of a
                             ///< taper at its narrow end, of one to a tip at its wide end
    double depth = 0.0;      ///< from the mouth to the end of the full diameter, tip excluded
    double boreDepth = 0.0;  ///< of the main bore alone, without counterbore and countersink; 0
                             ///< where a countersink goes through
    HoleBottom bottom = HoleBottom::Through;  ///< how it ends
    double bottomAngle = 0.0;                 ///< Conical: the whole angle at the tip
    double bottomRadius = 0.0;  ///< Round: of the sphere; Flat: of the rounding along the wall
    double counterboreDiameter = 0.0;  ///< of the outermost one
    double counterboreDepth = 0.0;     ///< of the outermost one
    double countersinkDiameter = 0.0;  ///< at its wide end
    double countersinkAngle = 0.0;     ///< whole angle
    double taperAngle = 0.0;           ///< whole angle of a conical main bore
    bool squareEntry = true;  ///< the face around the mouth is flat and at right angles to the axis
    bool squareExit = true;   ///< the same of a through hole's other end; true for other holes
    double entryAngle = 0.0;  ///< between the axis and the normal of the entry face at the axis
    double turn = 360.0;      ///< of the main bore: below 360 where a side or keyway opens it
    int entryFace = 0;        ///< the face that holds most of the mouth's outermost border
    double edgeDistance =
        kNone;  ///< from the mouth's wall to the nearest outer border of the entry face
    double wallDistance = kNone;  ///< least material around the wall, at right angles to the axis,
                                  ///< and below a blind bottom; the faces that it opens into apart
    double holeDistance = kNone;  ///< least material to the nearest hole that does not cross it
    int nearestHole = 0;          ///< that hole
    double freeLength = kNone;    ///< how far a tool as wide as the mouth can move back from the
                                  ///< mouth until it meets the part; kNone: for ever
    int pattern = 0;              ///< number of its pattern; 0 if no other hole equals it
    std::vector<int> aligned;     ///< other holes of the same diameter on the same axis
    std::string tapDrillFor;  ///< coarse thread whose tap drill has this diameter, such as "M6":
                              ///< a hint, as a shape does not tell what is tapped
    int thread = 0;  ///< place in Model::threads, from 1, of the thread that the file gives
                     ///< it: that of the main bore, else of another face; 0 without one
    std::vector<HoleSection> sections;  ///< from the mouth down; a groove lies within another one
    std::vector<int> faces;             ///< of the whole hole, in rising order
};

/// How the holes of a pattern lie.
enum class PatternKind { Row, Circle, Grid, Group };

/// Two or more equal holes with their mouths on one level and parallel axes. Holes of a Row lie on
/// one line, of a Circle on one circle at equal steps (which need not close), of a Grid on a
/// rectangle's lattice; all others are a Group. A square of four is a Circle if a round face of the
/// part has the middle axis, else a Grid.
struct HolePattern {
    int number = 0;                         ///< from 1
    PatternKind kind = PatternKind::Group;  ///< how they lie
    double diameter = 0.0;                  ///< of its holes
    double pitch = 0.0;           ///< between the axes of neighbours; of a Grid the smaller one
    double secondPitch = 0.0;     ///< Grid: across the first one
    double circleDiameter = 0.0;  ///< Circle: through the axes
    std::vector<int> holes;       ///< numbers, rising
};

/// A rounding, tangent to the faces on its two sides: a cylinder, a torus, or a freeform face whose
/// cross sections are arcs. Its radius may change along it. Equal roundings that run into each
/// other, around a corner too, are one. A concave one rounds an inner corner: a cutter of at most
/// its radius makes it. Rounded ends of slots, which turn by half, are left out. The radius of a
/// freeform face is as exact as the face, often to one part in a thousand.
struct Fillet {
    double radius = 0.0;         ///< smallest one
    double largestRadius = 0.0;  ///< largest one; equal to the smallest unless the radius changes
    bool concave = false;        ///< it rounds an inner corner
    Vector point;                ///< on it
    Vector axis;                 ///< unit, of a straight one; null for others
    double length = 0.0;         ///< along it
    std::vector<int> faces;      ///< of the rounding
};

/// An edge at which two faces meet inside without a rounding. The corners within a hole, at the
/// bottom or at steps, are left out.
struct SharpCorner {
    int edge = 0;             ///< its number
    Vector point;             ///< its middle
    Vector direction;         ///< unit, of a straight one; null for others
    double length = 0.0;      ///< of the edge
    double angle = 0.0;       ///< between the faces through the air: 90 in a square corner
    bool pocketWall = false;  ///< between two walls of a pocket: no rotating cutter makes it
};

/// A hollow with a flat floor and walls around it, or one through the part with walls only. One or
/// more sides may be missing (a slot), but two flat walls must face each other then: a step is no
/// pocket. Round holes are none either, nor what is closed above, as a T-slot is. The levels of a
/// stepped pocket are pockets of their own.
struct Pocket {
    int number = 0;            ///< from 1
    int solid = 0;             ///< number of its solid; 0 in an open shape
    int floor = 0;             ///< face; 0 of a through pocket
    Vector point;              ///< of the floor; of a through pocket in the middle of its mouth
    Vector axis;               ///< unit, into the material
    double depth = 0.0;        ///< from the floor to the top of its lowest wall
    double tallestWall = 0.0;  ///< from the floor to the top of its tallest one
    double width = 0.0;   ///< the smallest distance between facing walls; 0 if none face each other
    double length = 0.0;  ///< across the width; 0 without a width
    double cornerRadius = kNone;  ///< smallest of the corners between walls, also of a slot's round
                                  ///< end; 0 if one is sharp; kNone if it has no corner
    bool sharpCorner = false;     ///< two walls meet without a rounding
    double floorRadius = 0.0;     ///< smallest rounding between wall and floor; 0 if one has none
    bool open = false;            ///< a side is missing
    std::vector<int> faces;       ///< floor, roundings and walls, in rising order
};

/// A stretch of a turned part with one straight outline.
struct TurnedSection {
    bool inner = false;          ///< of a bore
    double start = 0.0;          ///< along the axis from the origin
    double length = 0.0;         ///< along the axis
    double startDiameter = 0.0;  ///< at its start
    double endDiameter = 0.0;    ///< at its end
    double taperAngle = 0.0;     ///< whole angle; 0 of a cylinder
    std::vector<int> faces;      ///< of the stretch
};

/// A recess with a cylindrical bottom between two walls square to the axis, at most half as wide as
/// the part is thick there: a longer one is a neck.
struct Groove {
    bool inner = false;         ///< in a bore
    double start = 0.0;         ///< along the axis from the origin
    double width = 0.0;         ///< between the walls
    double depth = 0.0;         ///< below the lower one of the walls
    double diameter = 0.0;      ///< at its bottom
    double cornerRadius = 0.0;  ///< smallest between bottom and walls; 0 if one is sharp
    Vector point;               ///< on its bottom
    std::vector<int> faces;     ///< of bottom, roundings and walls, in rising order
};

/// Whether a part is turned: one solid that is round outside, with at least two thirds of its
/// surface around the axis.
struct Turned {
    bool is = false;                      ///< it is turned
    std::string reason;                   ///< why it is none; English
    Vector origin;                        ///< of the axis, where the part begins: its heavier end
    Vector axis;                          ///< unit, through the part
    double length = 0.0;                  ///< over all
    double diameter = 0.0;                ///< over all
    double share = 0.0;                   ///< of the surface that lies around the axis
    std::vector<TurnedSection> sections;  ///< outer ones first, along the axis
    std::vector<Groove> grooves;          ///< along the axis
};

/// A bend of a sheet.
struct Bend {
    double innerRadius = 0.0;     ///< 0 of a sharp one
    double angle = 0.0;           ///< by which the sheet is bent from flat
    double length = 0.0;          ///< along the bend line
    Vector point;                 ///< on its inner side
    Vector axis;                  ///< unit, along the bend line
    double flangeLength = kNone;  ///< of the shorter flat beside it, from the outside of the bend;
                                  ///< kNone without a flat
    bool closed = false;          ///< bent back onto itself: a hem
    std::vector<int> faces;       ///< inner and outer side, in rising order
};

/// Where a hole is in a sheet.
struct SheetHole {
    int hole = 0;                 ///< its number
    double bendDistance = kNone;  ///< from the bore's wall to where the nearest bend begins
    int bend = 0;                 ///< place of that bend in SheetMetal::bends, from 1
    double edgeDistance = kNone;  ///< from the bore's wall to the nearest border of the sheet
};

/// Whether a part is of sheet: one solid of one thickness, thin beside its size, flat or bent along
/// straight lines.
struct SheetMetal {
    bool is = false;               ///< it is of sheet
    std::string reason;            ///< why it is none; English
    double thickness = 0.0;        ///< between its two sides
    std::vector<Bend> bends;       ///< in the order of their first faces
    std::vector<SheetHole> holes;  ///< in the order of their numbers
};

}  // namespace corvane::part
