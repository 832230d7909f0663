#include "Making.h"

#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <numbers>

namespace figures {

using namespace shapes;

namespace {

constexpr double kNear = 1e-6;

bool same(double a, double b) {
    return std::abs(a - b) < kNear;
}

}  // namespace

TopoDS_Shape roundedWhere(const TopoDS_Shape& shape, double radius, const Choose& choose) {
    BRepFilletAPI_MakeFillet fillet(shape);
    TopTools_MapOfShape seen;
    for (TopExp_Explorer it(shape, TopAbs_EDGE); it.More(); it.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(it.Current());
        const gp_Pnt start = BRep_Tool::Pnt(TopExp::FirstVertex(edge));
        const gp_Pnt end = BRep_Tool::Pnt(TopExp::LastVertex(edge));
        if (choose(start, end) && seen.Add(edge)) fillet.Add(radius, edge);
    }
    return fillet.Shape();
}

TopoDS_Shape prism(gp_Pnt corner, double length, double width, double height, double radius,
                   double floor) {
    TopoDS_Shape shape = box(length, width, height, corner);
    if (radius > 0)
        shape = roundedWhere(shape, radius, [](const gp_Pnt& a, const gp_Pnt& b) {
            return same(a.X(), b.X()) && same(a.Y(), b.Y());
        });
    if (floor > 0)
        shape = roundedWhere(shape, floor, [&](const gp_Pnt& a, const gp_Pnt& b) {
            return same(a.Z(), corner.Z()) && same(b.Z(), corner.Z());
        });
    return shape;
}

TopoDS_Shape drill(double x, double y, double top, double diameter, double depth, double angle) {
    const TopoDS_Shape bore = cylinder({{x, y, top - depth}, {0, 0, 1}}, diameter / 2, depth);
    if (angle == 0) return bore;
    const double tip = diameter / 2 / std::tan(angle / 2 * std::numbers::pi / 180);
    return fuse(bore, cone({{x, y, top - depth - tip}, {0, 0, 1}}, 0, diameter / 2, tip));
}

TopoDS_Shape plate(double height, std::initializer_list<TopoDS_Shape> tools) {
    TopoDS_Shape shape = box(60, 60, height);
    for (const TopoDS_Shape& tool : tools)
        shape = cut(shape, tool);
    return shape;
}

TopoDS_Shape bent(const Angle& angle, std::initializer_list<TopoDS_Shape> tools) {
    const double t = angle.thickness;
    TopoDS_Shape shape =
        cut(box(angle.base, 60, angle.flange), box(angle.base, 60, angle.flange, {t, 0, t}));
    const auto along = [](double at) {
        return [at](const gp_Pnt& a, const gp_Pnt& b) {
            return same(a.X(), at) && same(b.X(), at) && same(a.Z(), at) && same(b.Z(), at);
        };
    };
    shape = roundedWhere(shape, angle.radius, along(t));
    shape = roundedWhere(shape, angle.radius + t, along(0));
    for (const TopoDS_Shape& tool : tools)
        shape = cut(shape, tool);
    return shape;
}

}  // namespace figures
