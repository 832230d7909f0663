#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <Poly_Triangulation.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Ax3.hxx>
#include <stdexcept>

#include "../Vec.h"
#include "Bodies.h"
#include "Convert.h"

namespace corvane::part::reading {
namespace {

/// Degrees that a facet may turn from the next: the sixteenth part of a circle.
constexpr double kMeshAngle = 22.5;

/// Calls `work` with each face and its number, in the order of the model.
template <typename Work>
void eachFace(const Bodies& bodies, Work work) {
    int number = 0;
    for (const Body& body : bodies.bodies) {
        TopTools_MapOfShape seen;
        for (TopExp_Explorer it(body.shape, TopAbs_FACE); it.More(); it.Next())
            if (seen.Add(it.Current())) work(TopoDS::Face(it.Current()), ++number);
    }
}

void addFacets(const TopoDS_Face& face, int number, Mesh& mesh) {
    TopLoc_Location location;
    const Handle(Poly_Triangulation) facets = BRep_Tool::Triangulation(face, location);
    if (facets.IsNull()) return;
    const auto base = static_cast<std::uint32_t>(mesh.vertices.size());
    for (int i = 1; i <= facets->NbNodes(); ++i)
        mesh.vertices.push_back(from(facets->Node(i).Transformed(location)));
    // A mirrored place turns the facets too.
    const bool flip =
        (face.Orientation() == TopAbs_REVERSED) != location.Transformation().IsNegative();
    for (int i = 1; i <= facets->NbTriangles(); ++i) {
        int a = 0, b = 0, c = 0;
        facets->Triangle(i).Get(a, b, c);
        if (flip) std::swap(b, c);
        const auto at = [base](int node) { return base + static_cast<std::uint32_t>(node - 1); };
        mesh.triangles.push_back({at(a), at(b), at(c)});
        mesh.faces.push_back(number);
    }
}

/// Does work of the kernel, whose failures are no std::exception, for callers that know nothing of
/// it.
template <typename Work>
auto guarded(Work work) {
    try {
        return work();
    } catch (const Standard_Failure& failure) {
        throw std::runtime_error(failure.GetMessageString());
    }
}

class KernelShape : public Shape {
public:
    explicit KernelShape(Bodies bodies) : bodies_(std::move(bodies)) {}

    Mesh mesh(double deviation) override {
        return guarded([&] { return makeMesh(deviation); });
    }
    Box box(const Frame& frame) override {
        return guarded([&] { return makeBox(frame); });
    }
    std::vector<int> invalidFaces() override {
        return guarded([&] { return findInvalidFaces(); });
    }

private:
    Mesh makeMesh(double deviation) const {
        const TopoDS_Compound all = compound();
        BRepMesh_IncrementalMesh(all, deviation, false, radians(kMeshAngle), false);
        Mesh mesh;
        eachFace(bodies_,
                 [&](const TopoDS_Face& face, int number) { addFacets(face, number, mesh); });
        return mesh;
    }

    Box makeBox(const Frame& frame) const {
        gp_Trsf turn;
        turn.SetTransformation(gp_Ax3({0, 0, 0}, toDir(frame.z), toDir(frame.x)));
        Box all;
        for (const Body& body : bodies_.bodies) {
            Bnd_Box box;
            const TopLoc_Location location = TopLoc_Location(turn) * body.shape.Location();
            // A place of an older file may scale, which makes Located raise unless told.
            BRepBndLib::AddOptimal(body.shape.Located(location, false), box, false, false);
            if (box.IsVoid()) continue;
            box.SetGap(0.0);
            add(all, from(box.CornerMin()));
            add(all, from(box.CornerMax()));
        }
        return all;
    }

    std::vector<int> findInvalidFaces() const {
        std::vector<int> invalid;
        const TopoDS_Compound all = compound();
        const BRepCheck_Analyzer analyzer(all);
        if (analyzer.IsValid()) return invalid;
        eachFace(bodies_, [&](const TopoDS_Face& face, int number) {
            if (!analyzer.IsValid(face)) invalid.push_back(number);
        });
        return invalid;
    }

    [[nodiscard]] TopoDS_Compound compound() const {
        TopoDS_Compound all;
        BRep_Builder builder;
        builder.MakeCompound(all);
        for (const Body& body : bodies_.bodies)
            builder.Add(all, body.shape);
        return all;
    }

    Bodies bodies_;
};

}  // namespace

std::unique_ptr<Shape> keep(Bodies bodies) {
    return std::make_unique<KernelShape>(std::move(bodies));
}

}  // namespace corvane::part::reading
