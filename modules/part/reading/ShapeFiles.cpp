// IGES and BREP, and what all formats share: from a shape of any kind to solids.

#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepLib.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <IGESControl_Reader.hxx>
#include <IGESData_IGESModel.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Solid.hxx>

#include "Bodies.h"

namespace corvane::part::reading {
namespace {

/// Faces of most surface files meet within this distance of each other, in millimetres.
constexpr double kSewingTolerance = 1e-3;

/// A solid of a closed shell, with the material inside; the shell itself if it is open.
TopoDS_Shape solidOf(const TopoDS_Shape& shell) {
    if (!BRep_Tool::IsClosed(shell)) return shell;
    TopoDS_Solid solid;
    BRep_Builder builder;
    builder.MakeSolid(solid);
    builder.Add(solid, shell);
    BRepLib::OrientClosedSolid(solid);
    return solid;
}

TopoDS_Shape sewn(const TopoDS_Shape& shape) {
    BRepBuilderAPI_Sewing sewing(kSewingTolerance);
    bool any = false;
    for (TopExp_Explorer it(shape, TopAbs_FACE, TopAbs_SOLID); it.More(); it.Next()) {
        sewing.Add(it.Current());
        any = true;
    }
    if (!any) return {};
    sewing.Perform();
    return sewing.SewedShape();
}

void addOpen(const TopoDS_Shape& shape, const std::string& name, const std::string& place,
             Bodies& bodies) {
    const TopoDS_Shape whole = sewn(shape);
    if (whole.IsNull()) return;
    for (TopExp_Explorer it(whole, TopAbs_SHELL); it.More(); it.Next())
        bodies.bodies.push_back({solidOf(it.Current()), name, place});
    for (TopExp_Explorer it(whole, TopAbs_FACE, TopAbs_SHELL); it.More(); it.Next())
        bodies.bodies.push_back({it.Current(), name, place});
}

}  // namespace

void addBodies(const TopoDS_Shape& shape, const std::string& name, const std::string& place,
               Bodies& bodies) {
    if (shape.IsNull()) return;
    for (TopExp_Explorer it(shape, TopAbs_SOLID); it.More() && bodies.bodies.size() <= kMostBodies;
         it.Next())
        bodies.bodies.push_back({it.Current(), name, place});
    addOpen(shape, name, place, bodies);
}

void scale(Bodies& bodies, double factor) {
    if (factor == 1.0) return;
    gp_Trsf transformation;
    transformation.SetScale({0, 0, 0}, factor);
    for (Body& body : bodies.bodies)
        body.shape = BRepBuilderAPI_Transform(body.shape, transformation, true).Shape();
}

Bodies readIges(const std::filesystem::path& file) {
    Bodies bodies;
    IGESControl_Reader reader;
    if (reader.ReadFile(file.string().c_str()) != IFSelect_RetDone) {
        bodies.error = "the file is no readable IGES file";
        return bodies;
    }
    const Handle(IGESData_IGESModel) model = Handle(IGESData_IGESModel)::DownCast(reader.Model());
    if (!model.IsNull() && !model->GlobalSection().UnitName().IsNull())
        bodies.units = model->GlobalSection().UnitName()->ToCString();
    reader.TransferRoots();
    addBodies(reader.OneShape(), {}, {}, bodies);
    return bodies;
}

Bodies readBrep(const std::filesystem::path& file) {
    Bodies bodies;
    TopoDS_Shape shape;
    if (!BRepTools::Read(shape, file.string().c_str(), BRep_Builder()) || shape.IsNull()) {
        bodies.error = "the file is no readable BREP file";
        return bodies;
    }
    addBodies(shape, {}, {}, bodies);
    return bodies;
}

}  // namespace corvane::part::reading
