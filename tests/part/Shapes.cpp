#include "Shapes.h"

#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESControl_Writer.hxx>
#include <Interface_Static.hxx>
#include <STEPControl_Controller.hxx>
#include <STEPControl_Writer.hxx>
#include <StlAPI_Writer.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace shapes {

TopoDS_Shape box(double x, double y, double z, gp_Pnt corner) {
    return BRepPrimAPI_MakeBox(corner, x, y, z).Shape();
}
TopoDS_Shape cylinder(const gp_Ax2& axes, double radius, double height) {
    return BRepPrimAPI_MakeCylinder(axes, radius, height).Shape();
}
TopoDS_Shape cone(const gp_Ax2& axes, double radius, double topRadius, double height) {
    return BRepPrimAPI_MakeCone(axes, radius, topRadius, height).Shape();
}
TopoDS_Shape extruded(std::initializer_list<gp_Pnt> corners, double height) {
    BRepBuilderAPI_MakePolygon polygon;
    for (const gp_Pnt& corner : corners)
        polygon.Add(corner);
    polygon.Close();
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(polygon.Wire()).Shape(),
                                 gp_Vec(0, 0, height))
        .Shape();
}

TopoDS_Shape cut(const TopoDS_Shape& from, const TopoDS_Shape& tool) {
    return BRepAlgoAPI_Cut(from, tool).Shape();
}
TopoDS_Shape common(const TopoDS_Shape& a, const TopoDS_Shape& b) {
    return BRepAlgoAPI_Common(a, b).Shape();
}
TopoDS_Shape fuse(const TopoDS_Shape& a, const TopoDS_Shape& b) {
    return BRepAlgoAPI_Fuse(a, b).Shape();
}

TopoDS_Shape rounded(const TopoDS_Shape& shape, double radius) {
    BRepFilletAPI_MakeFillet fillet(shape);
    TopTools_MapOfShape seen;
    for (TopExp_Explorer it(shape, TopAbs_EDGE); it.More(); it.Next())
        if (seen.Add(it.Current())) fillet.Add(radius, TopoDS::Edge(it.Current()));
    return fillet.Shape();
}

TopoDS_Shape compound(std::initializer_list<TopoDS_Shape> shapes) {
    TopoDS_Compound all;
    BRep_Builder builder;
    builder.MakeCompound(all);
    for (const TopoDS_Shape& shape : shapes)
        builder.Add(all, shape);
    return all;
}

TopoDS_Shape transformed(const TopoDS_Shape& shape, const gp_Trsf& transformation) {
    return BRepBuilderAPI_Transform(shape, transformation, true).Shape();
}

std::filesystem::path sharedPart(const char* name) {
    const char* folder = std::getenv("CORVANE_SHARED_PARTS");
    const std::filesystem::path beside = CORVANE_TEST_DATA "/../../shared/parts";
    return (folder != nullptr ? std::filesystem::path(folder) : beside) / name;
}

void write(const TopoDS_Shape& shape, const std::filesystem::path& file, const char* unit,
           const Meshing& meshing) {
    const std::string ending = file.extension().string();
    const std::string path = file.string();
    bool done = false;
    if (ending == ".step") {
        STEPControl_Controller::Init();
        Interface_Static::SetCVal("write.step.unit", unit);
        STEPControl_Writer writer;
        writer.Transfer(shape, STEPControl_AsIs);
        done = writer.Write(path.c_str()) == IFSelect_RetDone;
        Interface_Static::SetCVal("write.step.unit", "MM");
    } else if (ending == ".iges") {
        IGESControl_Controller::Init();
        IGESControl_Writer writer("MM", 0);
        writer.AddShape(shape);
        writer.ComputeModel();
        done = writer.Write(path.c_str());
    } else if (ending == ".brep") {
        done = BRepTools::Write(shape, path.c_str());
    } else if (ending == ".stl") {
        BRepMesh_IncrementalMesh(shape, meshing.deviation, false, meshing.turn);
        StlAPI_Writer writer;
        writer.ASCIIMode() = !meshing.binary;
        done = writer.Write(shape, path.c_str());
    }
    if (!done) throw std::runtime_error("cannot write " + path);
}

void writeAssembly(std::initializer_list<TopoDS_Shape> parts, const std::filesystem::path& file) {
    STEPControl_Controller::Init();
    const int usual = Interface_Static::IVal("write.step.assembly");
    Interface_Static::SetIVal("write.step.assembly", 1);
    STEPControl_Writer writer;
    writer.Transfer(compound(parts), STEPControl_AsIs);
    const bool done = writer.Write(file.string().c_str()) == IFSelect_RetDone;
    Interface_Static::SetIVal("write.step.assembly", usual);
    if (!done) throw std::runtime_error("cannot write " + file.string());
}

std::string faceOfCylinder(const std::string& text, double radius) {
    const std::regex cylinders("(#\\d+) = CYLINDRICAL_SURFACE\\('',#\\d+,\\s*([0-9.E+-]+)\\)");
    for (std::sregex_iterator it(text.begin(), text.end(), cylinders), end; it != end; ++it) {
        if (std::abs(std::stod((*it)[2]) - radius) > 1e-9) continue;
        const std::regex faces("(#\\d+) = ADVANCED_FACE\\('[^']*',\\([^)]*\\)," + (*it)[1].str() +
                               ",");
        std::smatch face;
        if (std::regex_search(text, face, faces)) return face[1];
    }
    throw std::runtime_error("no cylinder has the radius " + std::to_string(radius));
}

void nameCylinder(const std::filesystem::path& step, double radius, const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(step).rdbuf();
    std::string named = text.str();
    const std::string face = faceOfCylinder(named, radius) + " = ADVANCED_FACE('";
    named.insert(named.find(face) + face.size(), name);
    std::ofstream(step) << named;
}

}  // namespace shapes
