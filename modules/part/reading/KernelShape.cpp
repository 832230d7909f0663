#include <BRepBuilderAPI_Transform.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
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
#include "FaceBox.h"
#include "FaceCheck.h"
#include "FaceMesher.h"

namespace corvane::part::reading {
namespace {

/// Degrees that a facet may turn from the next: the sixteenth part of a circle.
constexpr double kMeshAngle = 22.5;
/// Millimetres of deviation of a part of a kilometre.
constexpr double kLargestDeviation = 500.0;

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

void addFacets(const TopoDS_Face& face, int number, const Handle(Poly_Triangulation) & facets,
               double scale, Mesh& mesh) {
    const gp_Trsf place = face.Location().Transformation();
    const auto base = static_cast<std::uint32_t>(mesh.vertices.size());
    for (int i = 1; i <= facets->NbNodes(); ++i)
        mesh.vertices.push_back(from(gp_Pnt(facets->Node(i).XYZ() * scale).Transformed(place)));
    // A mirrored place turns the facets and the sides of the surface.
    const bool flip = face.Orientation() == TopAbs_REVERSED;
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

bool holds(const Box& box, const Box& other) {
    const Vector low = other.least - box.least, high = box.greatest - other.greatest;
    return std::min({low.x, low.y, low.z, high.x, high.y, high.z}) >= -kExact;
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
    using NumberedFaces = std::vector<std::pair<TopoDS_Face, int>>;

    /// The kernel's mesher needs many times the memory of the faces, so it gets some at a time.
    Mesh makeMesh(double deviation) const {
        constexpr std::size_t kTogether = 2000;
        Mesh mesh;
        NumberedFaces faces;
        const auto flush = [&] {
            if (!faces.empty()) addMesh(faces, deviation, mesh);
            faces.clear();
        };
        eachFace(bodies_, [&](const TopoDS_Face& face, int number) {
            const bool isAlone = face.NbChildren() > kManyBorders;
            if (isAlone) flush();
            faces.emplace_back(face, number);
            if (isAlone || faces.size() == kTogether) flush();
        });
        flush();
        return mesh;
    }

    static void addMesh(const NumberedFaces& faces, double deviation, Mesh& mesh) {
        if (deviation > kLargestDeviation) {
            addMeshOfLikeness(faces, deviation, mesh);
            return;
        }
        const TopoDS_Compound some = compoundOf(faces, false);
        // Facets that came with the file may be anything.
        BRepTools::Clean(some);
        meshFaces(some, deviation, radians(kMeshAngle));
        TopLoc_Location ignored;
        for (const auto& [face, number] : faces)
            if (const auto facets = BRep_Tool::Triangulation(face, ignored); !facets.IsNull())
                addFacets(face, number, facets, 1.0, mesh);
        BRepTools::Clean(some);
    }

    /// The mesher goes over a face in steps of a fixed length. A part that is huge, as one in a
    /// wrong unit, would take it minutes, so a smaller likeness of it is meshed.
    static void addMeshOfLikeness(const NumberedFaces& faces, double deviation, Mesh& mesh) {
        gp_Trsf smaller;
        smaller.SetScale({0, 0, 0}, 1.0 / deviation);
        BRepBuilderAPI_Transform likeness(compoundOf(faces, true), smaller, true);
        BRepTools::Clean(likeness.Shape());
        meshFaces(likeness.Shape(), 1.0, radians(kMeshAngle));
        TopLoc_Location ignored;
        for (const auto& [face, number] : faces) {
            const TopoDS_Shape like = likeness.ModifiedShape(face.Located({}));
            const auto facets = BRep_Tool::Triangulation(TopoDS::Face(like), ignored);
            if (!facets.IsNull()) addFacets(face, number, facets, deviation, mesh);
        }
    }

    /// Where a face is in several places, as in an assembly, it has its likeness in none.
    static TopoDS_Compound compoundOf(const NumberedFaces& faces, bool isPlaceless) {
        const BRep_Builder builder;
        TopoDS_Compound some;
        builder.MakeCompound(some);
        for (const auto& [face, number] : faces)
            builder.Add(some, isPlaceless ? face.Located({}) : TopoDS_Shape(face));
        return some;
    }

    /// The exact box of a face costs a search for its extremes; few faces reach the part's box.
    Box makeBox(const Frame& frame) const {
        gp_Trsf turn;
        turn.SetTransformation(gp_Ax3({0, 0, 0}, toDir(frame.z), toDir(frame.x)));
        std::vector<RoughFace> faces;
        for (const Body& body : bodies_.bodies)
            for (TopExp_Explorer it(body.shape, TopAbs_FACE); it.More(); it.Next())
                // A place of an older file may scale, which makes Moved raise unless told.
                faces.push_back(roughBox(TopoDS::Face(it.Current().Moved(turn, false))));
        std::stable_sort(faces.begin(), faces.end(),
                         [](const RoughFace& l, const RoughFace& r) { return l.size > r.size; });
        Box all;
        for (const RoughFace& face : faces) {
            if (face.size < 0.0 || holds(all, face.box)) continue;
            const Box box = exactBox(face.shape);
            if (isEmpty(box)) continue;
            add(all, box.least);
            add(all, box.greatest);
        }
        return all;
    }

    std::vector<int> findInvalidFaces() const {
        std::vector<int> invalid;
        eachFace(bodies_, [&](const TopoDS_Face& face, int number) {
            if (!isValid(face)) invalid.push_back(number);
        });
        return invalid;
    }

    Bodies bodies_;
};

}  // namespace

std::unique_ptr<Shape> keep(Bodies bodies) {
    return std::make_unique<KernelShape>(std::move(bodies));
}

}  // namespace corvane::part::reading
