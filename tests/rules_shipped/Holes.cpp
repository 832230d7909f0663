#include <cmath>
#include <numbers>

#include "Figures.h"
#include "Making.h"

namespace figures {

using namespace shapes;

namespace {

Make holed(double diameter, double height = 20) {
    return [=] { return plate(height, {drill(30, 30, height, diameter, height)}); };
}

/// A blind hole with the tip of a drill.
Make blind(double diameter, double depth, double angle = 118) {
    return [=] { return plate(40, {drill(30, 30, 40, diameter, depth, angle)}); };
}

TopoDS_Shape slanted() {
    return plate(20, {cylinder({{22, 30, -8}, {0.4, 0, 1}}, 3, 60)});
}

/// A rod with a hole across it.
TopoDS_Shape pinned() {
    return cut(cylinder({{0, 0, 0}, {0, 0, 1}}, 10, 60),
               cylinder({{-15, 0, 30}, {1, 0, 0}}, 3, 30));
}

/// A hole whose wall is `rim` away from the side of the plate.
Make besideEdge(double rim) {
    return [=] { return plate(20, {drill(5 + rim, 30, 20, 10, 20)}); };
}

Make twoHoles(double web) {
    return [=] { return plate(20, {drill(20, 30, 20, 10, 20), drill(30 + web, 30, 20, 10, 20)}); };
}

/// A hole along y and one of `width` along z, `apart` along x.
Make across(double apart, double width) {
    return [=] {
        return plate(
            40, {drill(30, 30, 40, width, 40), cylinder({{30 + apart, 0, 20}, {0, 1, 0}}, 3, 30)});
    };
}

Make counterbored(double diameter) {
    return [=] { return plate(20, {drill(30, 30, 20, 6.6, 20), drill(30, 30, 20, diameter, 6)}); };
}

Make countersunk(double angle) {
    return [=] {
        // From a point below the mouth to 12 mm at it.
        const double depth = 6 / std::tan(angle / 2 * std::numbers::pi / 180);
        return plate(
            20, {drill(30, 30, 20, 6, 20), cone({{30, 30, 20 - depth}, {0, 0, 1}}, 0, 6, depth)});
    };
}

/// A hole in the lower web of a channel whose upper web is `air` above it.
Make channel(double air) {
    return [=] {
        return plate(40 + air, {box(50, 60, air, {10, 0, 20}), drill(40, 30, 20, 6, 15)});
    };
}

}  // namespace

std::vector<Case> holeCases() {
    std::vector<Case> cases{
        {"drilling", "Hole depth", holed(4, 30), holed(2, 30)},
        {"drilling", "Drill size", holed(5), holed(5.13)},
        {"drilling", "Smallest hole", holed(1.2), holed(0.8)},
        {"drilling", "Flat bottom", blind(6, 15), blind(6, 15, 0)},
        {"drilling", "Point angle", blind(6, 15), blind(6, 15, 90)},
        {"drilling", "Hole entry", holed(6), slanted},
        {"drilling", "Hole exit", pinned, slanted},
        {"drilling", "Hole near edge", besideEdge(1), besideEdge(0.5)},
        {"drilling", "Wall beside hole", blind(6, 30), blind(6, 39.5, 0)},
        {"drilling", "Wall between holes", twoHoles(1), twoHoles(0.5)},
        {"drilling", "Hole breaks out", besideEdge(-0.5), besideEdge(-4)},
        {"drilling", "Crossing holes", across(0, 20), across(2, 20)},
        {"drilling", "Tapped depth", blind(5, 12), blind(5, 8)},
        {"drilling", "Smallest thread", blind(5, 12), blind(1.25, 5)},
        {"drilling", "Counterbore", counterbored(11), counterbored(9)},
        {"drilling", "Countersink angle", countersunk(90), countersunk(75)},
        {"drilling", "Drill access", channel(30), channel(10)},
        {"die-casting", "Cored hole depth", blind(4, 10), blind(4, 20)},
        {"die-casting", "Smallest cored hole", holed(4), holed(3)},
        {"fdm", "FDM hole", holed(3), holed(1.5)},
        {"sla", "SLA hole", holed(0.8), holed(0.4)},
        {"sls", "SLS hole", holed(2), holed(1)},
        {"metal-powder-bed", "Metal hole", holed(2), holed(1)},
    };
    return cases;
}

}  // namespace figures
