#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepTools.hxx>
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
#include <gp_Torus.hxx>
#include <stdexcept>

#include "../Vec.h"
#include "Bodies.h"
#include "Convert.h"
#include "FaceCheck.h"
#include "FaceMesher.h"

namespace corvane::part::reading {
namespace {

/// Degrees that a facet may turn from the next: the sixteenth part of a circle.
constexpr double kMeshAngle = 22.5;
/// Millimetres by which a box may be too small: twice what the kernel takes for one point.
constexpr double kExact = 2e-7;

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

Box plain(Bnd_Box box) {
    box.SetGap(0.0);
    return {from(box.CornerMin()), from(box.CornerMax())};
}

/// A face with a box that is quick to find and at least as large as its own.
struct RoughFace {
    TopoDS_Face shape;
    Box box;
    double size = -1.0;  // of the box; below 0 of a face without one
};

Box common(const Box& l, const Box& r) {
    return {{std::max(l.least.x, r.least.x), std::max(l.least.y, r.least.y),
             std::max(l.least.z, r.least.z)},
            {std::min(l.greatest.x, r.greatest.x), std::min(l.greatest.y, r.greatest.y),
             std::min(l.greatest.z, r.greatest.z)}};
}

/// The box of the whole torus below a face: that of a patch is a guess of the kernel's, and wide.
Box boxOf(const gp_Torus& torus) {
    const Vector axis = from(torus.Axis().Direction()), centre = from(torus.Location());
    const auto reach = [&](double along) {
        return torus.MajorRadius() * std::sqrt(std::max(0.0, 1.0 - along * along)) +
               torus.MinorRadius();
    };
    const Vector half{reach(axis.x), reach(axis.y), reach(axis.z)};
    return {centre - half, centre + half};
}

RoughFace rough(const TopoDS_Face& face) {
    RoughFace result{face, {}, -1.0};
    Bnd_Box box;
    BRepBndLib::Add(face, box, false);
    if (box.IsVoid()) return result;
    const double gap = box.GetGap();
    result.box = plain(box);
    const BRepAdaptor_Surface surface(face, false);
    if (surface.GetType() == GeomAbs_Torus) result.box = common(result.box, boxOf(surface.Torus()));
    // The gap is the tolerance of the shape; what is within the kernel's own is no size.
    if (gap > kExact) {
        result.box.least = result.box.least - Vector{gap, gap, gap};
        result.box.greatest = result.box.greatest + Vector{gap, gap, gap};
    }
    result.size = diagonal(result.box);
    // The kernel samples other surfaces, and their box may be too small.
    if (surface.GetType() > GeomAbs_BSplineSurface) result.box = {Box{}.greatest, Box{}.least};
    return result;
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
    /// The kernel's mesher needs many times the memory of the faces, so it gets some at a time.
    Mesh makeMesh(double deviation) const {
        constexpr std::size_t kTogether = 2000;
        Mesh mesh;
        std::vector<std::pair<TopoDS_Face, int>> faces;
        const auto flush = [&] {
            if (faces.empty()) return;
            const BRep_Builder builder;
            TopoDS_Compound some;
            builder.MakeCompound(some);
            for (const auto& [face, number] : faces)
                builder.Add(some, face);
            // Facets that came with the file may be anything.
            BRepTools::Clean(some);
            meshFaces(some, deviation, radians(kMeshAngle));
            for (const auto& [face, number] : faces)
                addFacets(face, number, mesh);
            BRepTools::Clean(some);
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

    /// The exact box of a face costs a search for its extremes; few faces reach the part's box.
    Box makeBox(const Frame& frame) const {
        gp_Trsf turn;
        turn.SetTransformation(gp_Ax3({0, 0, 0}, toDir(frame.z), toDir(frame.x)));
        std::vector<RoughFace> faces;
        for (const Body& body : bodies_.bodies)
            for (TopExp_Explorer it(body.shape, TopAbs_FACE); it.More(); it.Next())
                // A place of an older file may scale, which makes Moved raise unless told.
                faces.push_back(rough(TopoDS::Face(it.Current().Moved(turn, false))));
        std::stable_sort(faces.begin(), faces.end(),
                         [](const RoughFace& l, const RoughFace& r) { return l.size > r.size; });
        Box all;
        for (const RoughFace& face : faces) {
            if (face.size < 0.0 || holds(all, face.box)) continue;
            Bnd_Box box;
            BRepBndLib::AddOptimal(face.shape, box, false, false);
            if (box.IsVoid()) continue;
            add(all, plain(box).least);
            add(all, plain(box).greatest);
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
