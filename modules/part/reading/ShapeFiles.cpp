// IGES and BREP, and what all formats share: from a shape of any kind to solids.

#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepLib.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <IGESControl_Reader.hxx>
#include <IGESData_IGESModel.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Solid.hxx>
#include <algorithm>
#include <sstream>
#include <unordered_map>

#include "Bodies.h"
#include "BrepText.h"
#include "IgesText.h"

namespace corvane::part::reading {
namespace {

/// Faces of most surface files meet within this distance of each other, in millimetres.
constexpr double kSewingTolerance = 1e-3;

/// A few lines can say of each shape that it holds the one before twice. Then these are more than
/// anybody can count, and the kernel takes them one by one.
constexpr double kMostParts = 1e8;

/// How many shapes there are with all that they hold, each as often as it is held.
class PartCount {
public:
    double of(const TopoDS_Shape& shape) {
        const auto [it, fresh] = known_.emplace(shape.TShape().get(), 1.0);
        if (!fresh) return it->second;
        double count = 1.0;
        for (TopoDS_Iterator part(shape, false, false); part.More(); part.Next())
            count += of(part.Value());
        return known_[shape.TShape().get()] = count;
    }

private:
    std::unordered_map<const TopoDS_TShape*, double> known_;
};

/// Whether each face has a surface: one of a mesh alone has none, which the kernel forgets.
bool haveSurfaces(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    return std::none_of(faces.cbegin(), faces.cend(), [](const TopoDS_Shape& face) {
        TopLoc_Location place;
        return BRep_Tool::Surface(TopoDS::Face(face), place).IsNull();
    });
}

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
    if (PartCount().of(shape) > kMostParts) {
        bodies.error = "the shape holds too many others";
        return;
    }
    if (!haveSurfaces(shape)) {
        bodies.error = "a face of the shape has no surface";
        return;
    }
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
    bodies.error = igesFault(contentOf(file));
    if (!bodies.error.empty()) return bodies;
    IGESControl_Reader reader;
    if (reader.ReadFile(file.string().c_str()) != IFSelect_RetDone) {
        bodies.error = "the file is no readable IGES file";
        return bodies;
    }
    if (const std::string fault = entityFault(reader.WS()); !fault.empty()) {
        bodies.error = "the IGES file cannot be read: " + fault;
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
    std::string text = contentOf(file);
    bodies.error = brepFault(text);
    if (!bodies.error.empty()) return bodies;
    std::istringstream stream(std::move(text));
    // Where a number is missing the kernel would wait for the next one for ever.
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    TopoDS_Shape shape;
    BRepTools::Read(shape, stream, BRep_Builder());
    if (shape.IsNull()) {
        bodies.error = "the BREP file holds no shape";
        return bodies;
    }
    addBodies(shape, {}, {}, bodies);
    return bodies;
}

}  // namespace corvane::part::reading
