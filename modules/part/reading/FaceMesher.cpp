#include "FaceMesher.h"

#include <BRepMesh_Context.hxx>
#include <BRepMesh_FaceDiscret.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepMesh_MeshAlgoFactory.hxx>
#include <BRepMesh_ModelHealer.hxx>
#include <BRepMesh_ShapeTool.hxx>
#include <IMeshData_Curve.hxx>
#include <IMeshData_Edge.hxx>
#include <IMeshData_Face.hxx>
#include <IMeshData_Model.hxx>
#include <IMeshData_PCurve.hxx>
#include <IMeshData_Wire.hxx>
#include <IMeshTools_MeshAlgo.hxx>
#include <Poly_Triangulation.hxx>
#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "Delaunay.h"

namespace corvane::part::reading {
namespace {

/// The points of a face's borders, as the kernel has divided them.
class Borders {
public:
    explicit Borders(const IMeshData::IFaceHandle& face) {
        for (int i = 0; i < face->WiresNb() && isSound_; ++i)
            addWire(face, *face->GetWire(i));
    }

    /// Whether the borders are rings on the surface.
    [[nodiscard]] bool areSound() const { return isSound_ && flat.size() >= 3; }

    std::vector<gp_Pnt> points;
    std::vector<Flat> flat;  ///< in the parameters of the surface
    std::vector<std::array<std::uint32_t, 2>> lines;

private:
    void addWire(const IMeshData::IFaceHandle& face, const IMeshData_Wire& wire) {
        const auto first = static_cast<std::uint32_t>(points.size());
        gp_Pnt2d end;
        for (int i = 0; i < wire.EdgesNb() && isSound_; ++i) {
            const auto edge = wire.GetEdge(i);
            const TopAbs_Orientation way = wire.GetEdgeOrientation(i);
            const auto curve = edge->GetPCurve(face.get(), way);
            const int count = curve->ParametersNb();
            // An edge inside a face is no border, and one without a length is no line.
            isSound_ = (way == TopAbs_FORWARD || way == TopAbs_REVERSED) && count >= 2 &&
                       count == edge->GetCurve()->ParametersNb() && !edge->GetDegenerated();
            if (!isSound_) return;
            const auto at = [&](int step) {
                return way == TopAbs_FORWARD ? step : count - 1 - step;
            };
            if (i > 0) isSound_ = meet(end, curve->GetPoint(at(0)));
            for (int step = 0; step + 1 < count; ++step)
                add(edge->GetCurve()->GetPoint(at(step)), curve->GetPoint(at(step)));
            end = curve->GetPoint(at(count - 1));
        }
        const auto last = static_cast<std::uint32_t>(points.size());
        if (first == last) return;
        isSound_ = isSound_ && meet(end, {flat[first].x, flat[first].y});
        for (std::uint32_t i = first; i < last; ++i)
            lines.push_back({i, i + 1 < last ? i + 1 : first});
    }

    void add(const gp_Pnt& point, const gp_Pnt2d& parameters) {
        points.push_back(point);
        flat.push_back({parameters.X(), parameters.Y()});
    }

    /// Where edges end apart, the border jumps: round a closed surface, or over a fault.
    static bool meet(const gp_Pnt2d& end, const gp_Pnt2d& start) {
        constexpr double kSame = 1e-3;
        return end.SquareDistance(start) <= kSame * kSame;
    }

    bool isSound_ = true;
};

/// Meshes faces that are flat or bent one way: their facets need no corners but on the borders.
class BorderMesher : public IMeshTools_MeshAlgo {
public:
    BorderMesher(bool isBent, Handle(IMeshTools_MeshAlgo) other)
        : isBent_(isBent), other_(std::move(other)) {}

    void Perform(const IMeshData::IFaceHandle& face, const IMeshTools_Parameters& parameters,
                 const Message_ProgressRange& range) override {
        Borders borders(face);
        if (!borders.areSound() || !mesh(*face, borders, parameters))
            other_->Perform(face, parameters, range);
    }

    DEFINE_STANDARD_RTTI_INLINE(BorderMesher, IMeshTools_MeshAlgo)

private:
    bool mesh(const IMeshData_Face& face, Borders& borders,
              const IMeshTools_Parameters& parameters) const {
        if (isBent_) flatten(borders.flat, parameters.Angle);
        const auto triangles = triangulate(borders.flat, borders.lines);
        if (!triangles || triangles->empty()) return false;
        if (isBent_ && !areNarrow(borders.flat, *triangles, parameters.Angle)) return false;
        put(face.GetFace(), borders.points, *triangles);
        return true;
    }

    /// Makes the face low, so that the best triangles are those that go least around it.
    static void flatten(std::vector<Flat>& points, double angle) {
        const auto [low, high] = std::minmax_element(
            points.begin(), points.end(), [](const Flat& l, const Flat& r) { return l.y < r.y; });
        const double height = high->y - low->y;
        if (!(height > 0.0)) return;
        const double scale = angle / 2.0 / height;
        for (Flat& point : points)
            point.y *= scale;
    }

    /// Whether no triangle goes farther around than the angle.
    static bool areNarrow(const std::vector<Flat>& points, const std::vector<Corners>& triangles,
                          double angle) {
        return std::all_of(triangles.begin(), triangles.end(), [&](const Corners& c) {
            const auto [low, high] = std::minmax({points[c[0]].x, points[c[1]].x, points[c[2]].x});
            return high - low <= angle * 1.01;
        });
    }

    static void put(const TopoDS_Face& face, const std::vector<gp_Pnt>& points,
                    const std::vector<Corners>& triangles) {
        Handle(Poly_Triangulation) facets = new Poly_Triangulation(
            static_cast<int>(points.size()), static_cast<int>(triangles.size()), false);
        for (std::size_t i = 0; i < points.size(); ++i)
            facets->SetNode(static_cast<int>(i) + 1, points[i]);
        const auto node = [](std::uint32_t corner) { return static_cast<int>(corner) + 1; };
        for (std::size_t i = 0; i < triangles.size(); ++i) {
            const Corners& c = triangles[i];
            facets->SetTriangle(static_cast<int>(i) + 1, {node(c[0]), node(c[1]), node(c[2])});
        }
        BRepMesh_ShapeTool::AddInFace(face, facets);
    }

    bool isBent_;
    Handle(IMeshTools_MeshAlgo) other_;
};

class Meshers : public BRepMesh_MeshAlgoFactory {
public:
    Handle(IMeshTools_MeshAlgo)
        GetAlgo(GeomAbs_SurfaceType type, const IMeshTools_Parameters& parameters) const override {
        Handle(IMeshTools_MeshAlgo) other = BRepMesh_MeshAlgoFactory::GetAlgo(type, parameters);
        if (type == GeomAbs_Plane) return new BorderMesher(false, std::move(other));
        if (type == GeomAbs_Cylinder || type == GeomAbs_Cone)
            return new BorderMesher(true, std::move(other));
        return other;
    }
    DEFINE_STANDARD_RTTI_INLINE(Meshers, BRepMesh_MeshAlgoFactory)
};

/// The kernel's search for edges that the division made cross compares each border of a face with
/// each; crossed borders of others have no triangles here, which tells too.
class Healer : public BRepMesh_ModelHealer {
public:
    /// An edge of a part that is sound has some thousand at most, where it winds around often. What
    /// follows takes the square of them.
    [[nodiscard]] bool foundTooManyPoints() const { return foundTooManyPoints_; }

    DEFINE_STANDARD_RTTI_INLINE(Healer, BRepMesh_ModelHealer)

protected:
    bool performInternal(const Handle(IMeshData_Model) & model,
                         const IMeshTools_Parameters& parameters,
                         const Message_ProgressRange& range) override {
        for (int i = 0; i < model->EdgesNb(); ++i)
            if (model->GetEdge(i)->GetCurve()->ParametersNb() > kMostPoints) {
                foundTooManyPoints_ = true;
                return false;
            }
        for (int i = 0; i < model->FacesNb(); ++i)
            if (model->GetFace(i)->WiresNb() > kManyBorders) return true;
        return BRepMesh_ModelHealer::performInternal(model, parameters, range);
    }

private:
    static constexpr int kMostPoints = 50'000;
    bool foundTooManyPoints_ = false;
};

}  // namespace

void meshFaces(const TopoDS_Shape& shape, double deviation, double angle) {
    const Handle(BRepMesh_Context) context = new BRepMesh_Context;
    context->SetFaceDiscret(new BRepMesh_FaceDiscret(new Meshers));
    const Handle(Healer) healer = new Healer;
    context->SetModelHealer(healer);
    // It tells the edges which facets are beside them.
    context->SetPostProcessor({});
    BRepMesh_IncrementalMesh mesher;
    mesher.SetShape(shape);
    mesher.ChangeParameters().Deflection = deviation;
    mesher.ChangeParameters().Angle = angle;
    mesher.Perform(context);
    if (healer->foundTooManyPoints())
        throw std::runtime_error("an edge of the shape has more than 50,000 bends");
}

}  // namespace corvane::part::reading
