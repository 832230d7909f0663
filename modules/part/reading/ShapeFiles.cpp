// IGES and BREP, and what all formats share: from a shape of any kind to solids.

#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepLib.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <IGESControl_Reader.hxx>
#include <IGESData_IGESModel.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Solid.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <unordered_map>

#include "Bodies.h"
#include "BrepText.h"
#include "IgesKinds.h"
#include "IgesText.h"

namespace corvane::part::reading {
namespace {

/// Faces of most surface files meet within this distance of each other, in millimetres. Where they
/// do not, they may be this part of the diagonal apart: as far as files of low precision say.
constexpr double kSewingDistance = 1e-3, kWidestGap = 1e-4;

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

struct Sewn {
    TopoDS_Shape shape;
    int open = 0;    // edges of one face alone
    int broken = 0;  // faces and edges that shrank to nothing, edges of more than two faces
};

Sewn sewnWithin(const std::vector<TopoDS_Shape>& faces, double distance) {
    BRepBuilderAPI_Sewing sewing(distance);
    for (const TopoDS_Shape& face : faces)
        sewing.Add(face);
    sewing.Perform();
    return {sewing.SewedShape(), sewing.NbFreeEdges(),
            sewing.NbDegeneratedShapes() + sewing.NbMultipleEdges()};
}

double diagonalOf(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::Add(shape, box, false);
    return box.IsVoid() || box.IsOpen() ? 0.0 : std::sqrt(box.SquareExtent());
}

/// The faces that are in no solid, sewn together at the least distance that closes them, or at the
/// first if none does. What would close them and crush small faces is no better than a gap.
TopoDS_Shape sewn(const TopoDS_Shape& shape, std::vector<std::string>& notes) {
    std::vector<TopoDS_Shape> faces;
    for (TopExp_Explorer it(shape, TopAbs_FACE, TopAbs_SOLID); it.More(); it.Next())
        faces.push_back(it.Current());
    if (faces.empty()) return {};
    const Sewn first = sewnWithin(faces, kSewingDistance);
    const double diagonal = diagonalOf(shape), most = kWidestGap * diagonal;
    for (double distance = kSewingDistance; first.open > 0 && distance < most;) {
        distance = std::min(10 * distance, most);
        const Sewn wider = sewnWithin(faces, distance);
        if (wider.open > 0 || wider.broken > first.broken) continue;
        std::array<char, 100> note{};
        std::snprintf(note.data(), note.size(),
                      "gaps between the faces, of up to %.2g %% of the part's size, are closed",
                      100 * distance / diagonal);
        notes.emplace_back(note.data());
        return wider.shape;
    }
    return first.shape;
}

void addOpen(const TopoDS_Shape& shape, const std::string& name, const std::string& place,
             Bodies& bodies) {
    const TopoDS_Shape whole = sewn(shape, bodies.notes);
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
    const IgesKinds kinds(reader.WS());
    std::string fault = entityFault(reader.WS());
    if (fault.empty()) fault = kinds.fault();
    if (!fault.empty()) {
        bodies.error = "the IGES file cannot be read: " + fault;
        return bodies;
    }
    const Handle(IGESData_IGESModel) model = Handle(IGESData_IGESModel)::DownCast(reader.Model());
    if (!model.IsNull() && !model->GlobalSection().UnitName().IsNull())
        bodies.units = model->GlobalSection().UnitName()->ToCString();
    reader.TransferRoots();
    kinds.tell(bodies);
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
