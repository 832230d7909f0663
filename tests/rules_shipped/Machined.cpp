#include <cmath>

#include "Figures.h"
#include "Making.h"

namespace figures {

using namespace shapes;

namespace {

/// A pocket of 40 mm length in a block.
Make pocketed(double width, double depth, double radius, double floor = 0) {
    return [=] {
        return plate(40, {prism({10, 10, 40 - depth}, 40, width, depth + 1, radius, floor)});
    };
}

Make slotted(double width) {
    return [=] { return plate(20, {box(60, width, 10, {0, 20, 10})}); };
}

TopoDS_Shape shaft() {
    return fuse(cylinder({{0, 0, 0}, {0, 0, 1}}, 10, 60), cylinder({{0, 0, 60}, {0, 0, 1}}, 7, 20));
}

Make bored(double depth) {
    return [=] { return cut(shaft(), cylinder({{0, 0, 80 - depth}, {0, 0, 1}}, 3, depth)); };
}

/// A shaft with a groove whose bottom corners have a radius.
Make grooved(double radius) {
    return [=] {
        const gp_Ax2 axes({0, 0, 20}, {0, 0, 1});
        const TopoDS_Shape ring = cut(cylinder(axes, 12, 6), cylinder(axes, 7, 6));
        const TopoDS_Shape shape = cut(shaft(), ring);
        if (radius == 0) return shape;
        return roundedWhere(shape, radius, [](const gp_Pnt& a, const gp_Pnt& b) {
            const bool inGroove = a.Z() > 19 && a.Z() < 27 && std::abs(a.Z() - b.Z()) < 1e-6;
            return inGroove && std::hypot(a.X(), a.Y()) < 7.5;
        });
    };
}

}  // namespace

std::vector<Case> machinedCases() {
    return {
        {"milling", "Pocket depth", pocketed(10, 30, 3), pocketed(6, 30, 2)},
        {"milling", "Pocket corner radius", pocketed(20, 20, 8), pocketed(20, 20, 4)},
        {"milling", "Sharp pocket corner", pocketed(20, 20, 8), pocketed(20, 20, 0)},
        {"milling", "Pocket floor radius", pocketed(20, 20, 8, 0.5), pocketed(20, 20, 8, 0.7)},
        {"milling", "Outer rounding", [] { return box(40, 30, 20); },
         [] { return rounded(box(40, 30, 20), 2); }},
        {"milling", "Narrow milled gap", slotted(4), slotted(2)},
        {"turning", "Turned shape", shaft, [] { return box(40, 30, 20); }},
        {"turning", "Turning size", shaft,
         [] {
             return cylinder({{0, 0, 0}, {0, 0, 1}}, 20, 1010);
         }},
        {"turning", "Bore depth", bored(20), bored(30)},
        {"turning", "Groove corner", grooved(0.4), grooved(0)},
        {"fdm", "FDM gap", slotted(1), slotted(0.3)},
        {"sla", "SLA gap", slotted(1), slotted(0.3)},
        {"sls", "SLS gap", slotted(1), slotted(0.2)},
    };
}

}  // namespace figures
