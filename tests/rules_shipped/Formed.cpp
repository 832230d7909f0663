#include <BRepPrimAPI_MakeWedge.hxx>
#include <cmath>
#include <numbers>

#include "Figures.h"
#include "Making.h"

namespace figures {

using namespace shapes;

namespace {

Make sheet(const Angle& angle) {
    return [=] { return bent(angle); };
}

/// An angle with a hole of a diameter at a place of its base.
Make sheetHole(double x, double y, double diameter) {
    return [=] { return bent({}, {drill(x, y, 10, diameter, 20)}); };
}

Make sheetHoles(double web) {
    return [=] { return bent({}, {drill(30, 30, 10, 6, 20), drill(36 + web, 30, 10, 6, 20)}); };
}

Make sheetSlot(double width) {
    return [=] { return bent({}, {box(30, width, 20, {31, 25, -10})}); };
}

/// A frustum that leaves its mould along z.
TopoDS_Shape tapered() {
    return cone({{0, 0, 0}, {0, 0, 1}}, 20, 18, 30);
}

/// A plain casting: walls with 2 degrees of draft, rounded all over.
TopoDS_Shape casting() {
    const double draft = 30 * std::tan(2 * std::numbers::pi / 180);
    return rounded(BRepPrimAPI_MakeWedge(80, 30, 60, draft, draft, 80 - draft, 60 - draft).Shape(),
                   3);
}

/// Pits from three sides: no two halves form it.
TopoDS_Shape pitted() {
    return plate(
        60, {cylinder({{30, 30, 40}, {0, 0, 1}}, 5, 20), cylinder({{0, 30, 20}, {1, 0, 0}}, 5, 20),
             cylinder({{30, 0, 20}, {0, 1, 0}}, 5, 20)});
}

/// A post with an arm at the top.
TopoDS_Shape gallows() {
    return fuse(box(10, 10, 40), box(40, 10, 10, {0, 0, 30}));
}

Make portal(double span) {
    return [=] { return cut(box(span + 20, 10, 30), box(span, 10, 20, {10, 0, 0})); };
}

}  // namespace

std::vector<Case> formedCases() {
    const auto block = [] { return box(40, 30, 20); };
    return {
        {"sheet-metal", "Sheet shape", sheet({}), block},
        {"sheet-metal", "Bend radius", sheet({}), sheet({2, 1, 60, 30})},
        {"sheet-metal", "Sheet hole diameter", sheetHole(30, 30, 3), sheetHole(30, 30, 1.5)},
        {"sheet-metal", "Sheet hole to edge", sheetHole(30, 30, 6), sheetHole(56, 30, 6)},
        {"sheet-metal", "Sheet hole to hole", sheetHoles(10), sheetHoles(2)},
        {"sheet-metal", "Hole to bend", sheetHole(30, 30, 6), sheetHole(9, 30, 6)},
        {"sheet-metal", "Flange length", sheet({}), sheet({2, 2, 60, 6})},
        {"sheet-metal", "Slot width", sheetSlot(6), sheetSlot(3)},
        {"injection-moulding", "Moulded draft", tapered, block},
        {"injection-moulding", "Moulded undercut", tapered, pitted},
        {"die-casting", "Cast draft", casting, block},
        {"die-casting", "Cast undercut", casting, pitted},
        {"fdm", "FDM overhang", block, gallows},
        {"fdm", "FDM bridge", portal(5), portal(20)},
        {"metal-powder-bed", "Metal overhang", block, gallows},
        {"metal-powder-bed", "Metal bridge", portal(1), portal(5)},
    };
}

}  // namespace figures
