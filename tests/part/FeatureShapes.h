#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Ax2.hxx>
#include <random>
#include <vector>

#include "corvane/part/Features.h"

/// Parts with features that are known because they were cut into them.
namespace shapes {

/// Where a revolved tool has which radius: millimetres below its origin and from its axis.
struct Profile {
    double depth, radius;
};

/// The solid of a profile around the axis, from the origin of `axes` along their direction.
TopoDS_Shape revolved(const gp_Ax2& axes, const std::vector<Profile>& profile);

struct KnownPart {
    TopoDS_Shape shape;
    // What they must be found as; numbers left out.
    std::vector<corvane::part::Hole> holes;
    std::vector<corvane::part::Pocket> pockets;
    std::size_t sharp = 0, sharpWalls = 0;  // sharp corners, and those between walls
    std::size_t fillets = 0;
    corvane::part::Turned turned;
    corvane::part::SheetMetal sheet;
    double wall = 0.0;        // the thinnest
    double draft = 0.0;       // of the drafted faces, for a pull along z
    std::size_t drafted = 0;  // how many they are; all others lie across
};

/// A block with a hole of a random kind in each of its cells, the same for the same seed.
KnownPart drilledBlock(unsigned seed);

/// A cutter's path: a box whose upright edges are rounded by `corner` and lower ones by `floor`.
TopoDS_Shape pocketTool(const gp_Pnt& low, double x, double y, double z, double corner,
                        double floor);

/// A block with a pocket in each of its cells.
KnownPart milledBlock(unsigned seed);

/// A block with pockets, holes in their floors and holes beside them.
KnownPart machinedBlock(unsigned seed);

/// A cup with a flat floor and walls of one thickness that lean outwards.
KnownPart draftedCup(unsigned seed);

/// A shaft of cylinders, tapers and grooves, some with a bore.
KnownPart shaft(unsigned seed);

/// A strip of sheet with bends to both sides and a hole in its first flat.
KnownPart bentStrip(unsigned seed);

}  // namespace shapes
