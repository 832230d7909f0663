#pragma once

#include <BRepFilletAPI_MakeFillet.hxx>
#include <functional>

#include "part/Shapes.h"

// Pieces that the figures are made of.
namespace figures {

using Choose = std::function<bool(const gp_Pnt& start, const gp_Pnt& end)>;

/// Rounds the edges whose ends fit, each once.
TopoDS_Shape roundedWhere(const TopoDS_Shape& shape, double radius, const Choose& choose);

/// A prism on the plane z = `bottom` with rounded upright edges and, for a `floor` above 0, rounded
/// bottom edges: the tool that cuts a pocket.
TopoDS_Shape prism(gp_Pnt corner, double length, double width, double height, double radius,
                   double floor = 0);

/// The tool for a hole from the height `top` downwards; `angle` is that of its tip, 0 for none.
TopoDS_Shape drill(double x, double y, double top, double diameter, double depth, double angle = 0);

/// A plate of 60 x 60 mm with the tools cut out.
TopoDS_Shape plate(double height, std::initializer_list<TopoDS_Shape> tools);

/// An angle of sheet, 60 mm wide: a base along x and an upright flange.
struct Angle {
    double thickness = 2, radius = 2, base = 60, flange = 30;
};
TopoDS_Shape bent(const Angle& angle, std::initializer_list<TopoDS_Shape> tools = {});

}  // namespace figures
