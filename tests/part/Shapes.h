#pragma once

#include <TopoDS_Shape.hxx>
#include <filesystem>
#include <gp_Ax2.hxx>

/// Makes parts of known size.
namespace shapes {

TopoDS_Shape box(double x, double y, double z, gp_Pnt corner = {0, 0, 0});
TopoDS_Shape cylinder(const gp_Ax2& axes, double radius, double height);
TopoDS_Shape cone(const gp_Ax2& axes, double radius, double topRadius, double height);
/// A prism over a polygon, along z.
TopoDS_Shape extruded(std::initializer_list<gp_Pnt> corners, double height);
TopoDS_Shape cut(const TopoDS_Shape& from, const TopoDS_Shape& tool);
TopoDS_Shape common(const TopoDS_Shape& a, const TopoDS_Shape& b);
TopoDS_Shape fuse(const TopoDS_Shape& a, const TopoDS_Shape& b);
/// Rounds every edge.
TopoDS_Shape rounded(const TopoDS_Shape& shape, double radius);
TopoDS_Shape compound(std::initializer_list<TopoDS_Shape> shapes);
TopoDS_Shape transformed(const TopoDS_Shape& shape, const gp_Trsf& transformation);

/// A public sample part, from the folder that CORVANE_SHARED_PARTS names or ../shared/parts beside
/// the project; such a file need not be there.
std::filesystem::path sharedPart(const char* name);

/// How near facets keep to the shape, in millimetres, and what they turn at most, in radians.
struct Meshing {
    double deviation = 0.02;
    double turn = 0.2;
    bool binary = false;
};

/// Writes a file of the kind that its ending says: step, iges, brep or stl.
/// `unit` is for STEP: "MM", "INCH", "M"; the shape itself is in millimetres.
void write(const TopoDS_Shape& shape, const std::filesystem::path& file, const char* unit = "MM",
           const Meshing& meshing = {});

/// Writes a STEP file of an assembly with the parts; one shape in several places is one part.
void writeAssembly(std::initializer_list<TopoDS_Shape> parts, const std::filesystem::path& file);

/// The instance, such as "#12", of the first face on a cylinder of that radius in a STEP text.
std::string faceOfCylinder(const std::string& text, double radius);
/// Names that face in the file.
void nameCylinder(const std::filesystem::path& step, double radius, const std::string& name);

}  // namespace shapes
