#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp.hxx>
#include <BRepLib.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GProp_GProps.hxx>
#include <Geom2d_Curve.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Circ.hxx>
#include <map>
#include <stdexcept>

#include "../Vec.h"
#include "ArcSections.h"
#include "Bodies.h"
#include "Convert.h"
#include "FaceReader.h"

namespace corvane::part::reading {
namespace {

/// Faces that meet at less than this angle are tangent: kernels join fillets to their neighbours
/// this well.
constexpr double kTangent = 0.5;
constexpr int kCurveSteps = 24;

struct Use {
    TopoDS_Edge edge;  // with the direction that it has in the face
    TopoDS_Face face;
    int number = 0;
};

Vector outwardAt(const Use& use, double parameter) {
    double first = 0, last = 0;
    const Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(use.edge, use.face, first, last);
    if (curve.IsNull()) return {};
    const gp_Pnt2d uv = curve->Value(parameter);
    return normalAt(use.face, uv.X(), uv.Y());
}

/// Reads one body: its faces, edges and loops, numbered on from what the model has.
class BodyReader {
public:
    /// `threads` has for each face with threads their places in the model.
    using Threads = std::multimap<const TopoDS_TShape*, std::size_t>;
    BodyReader(Model& model, const TopoDS_Shape& shape, int solid, const Threads& threads)
        : model_(model), shape_(shape), solid_(solid), threads_(threads) {}

    void read() {
        for (TopExp_Explorer it(shape_, TopAbs_FACE); it.More(); it.Next())
            if (!faces_.Contains(it.Current())) faces_.Add(it.Current());
        TopExp::MapShapes(shape_, TopAbs_VERTEX, vertices_);
        firstFace_ = static_cast<int>(model_.faces.size());
        firstEdge_ = static_cast<int>(model_.edges.size());
        for (int i = 1; i <= faces_.Extent(); ++i)
            addFace(i);
        for (std::size_t i = 0; i < uses_.size(); ++i)
            addEdge(uses_[i]);
    }

private:
    void addFace(int index) {
        const TopoDS_Face& shape = TopoDS::Face(faces_(index));
        Face face = readFace(shape);
        face.number = firstFace_ + index;
        face.solid = solid_;
        const TopoDS_Wire outer = BRepTools::OuterWire(shape);
        for (TopExp_Explorer wires(shape, TopAbs_WIRE); wires.More(); wires.Next()) {
            std::vector<int> loop = addLoop(wires.Current(), shape, face.number);
            if (loop.empty()) continue;
            const bool first = wires.Current().IsSame(outer);
            face.loops.insert(first ? face.loops.begin() : face.loops.end(), std::move(loop));
        }
        const auto [thread, end] = threads_.equal_range(shape.TShape().get());
        for (auto it = thread; it != end; ++it)
            model_.threads[it->second].faces.push_back(face.number);
        if (face.surface.kind == SurfaceKind::Other) addRounding(shape, face.number);
        model_.faces.push_back(std::move(face));
    }

    void addRounding(const TopoDS_Face& face, int number) {
        const auto sections = ArcSections::of(face);
        if (!sections) return;
        Rounding rounding = sections->rounding();
        rounding.face = number;
        for (TopExp_Explorer it(face, TopAbs_EDGE); it.More(); it.Next()) {
            const TopoDS_Edge& edge = TopoDS::Edge(it.Current());
            const int index = edges_.FindIndex(edge),
                      side = index > 0 ? sections->sideOf(edge) : -1;
            if (side >= 0)
                rounding.sides[static_cast<std::size_t>(side)].push_back(firstEdge_ + index);
        }
        model_.roundings.push_back(std::move(rounding));
    }

    std::vector<int> addLoop(const TopoDS_Shape& wire, const TopoDS_Face& face, int number) {
        std::vector<int> loop;
        for (TopExp_Explorer it(wire, TopAbs_EDGE); it.More(); it.Next()) {
            const TopoDS_Edge& edge = TopoDS::Edge(it.Current());
            if (BRep_Tool::Degenerated(edge)) continue;
            const int index = edges_.Add(edge);
            if (static_cast<std::size_t>(index) > uses_.size()) uses_.emplace_back();
            uses_[static_cast<std::size_t>(index - 1)].push_back({edge, face, number});
            loop.push_back(firstEdge_ + index);
        }
        return loop;
    }

    void addEdge(const std::vector<Use>& uses) {
        const TopoDS_Edge& shape = uses.front().edge;
        Edge edge;
        edge.number = static_cast<int>(model_.edges.size()) + 1;
        edge.faces = {uses.front().number, uses.size() > 1 ? uses[1].number : 0};
        TopoDS_Vertex first, last;
        TopExp::Vertices(shape, first, last);
        edge.vertices = {vertices_.FindIndex(first), vertices_.FindIndex(last)};
        if (!BRep_Tool::IsGeometric(shape)) {
            model_.edges.push_back(std::move(edge));
            return;
        }
        const BRepAdaptor_Curve curve(shape);
        readCurve(curve, edge);
        classify(uses, curve, edge);
        model_.edges.push_back(std::move(edge));
    }

    static void readCurve(const BRepAdaptor_Curve& curve, Edge& edge) {
        const double t0 = curve.FirstParameter(), t1 = curve.LastParameter();
        int steps = kCurveSteps;
        if (curve.GetType() == GeomAbs_Line) {
            edge.kind = CurveKind::Line;
            steps = 1;
        } else if (curve.GetType() == GeomAbs_Circle) {
            edge.kind = CurveKind::Circle;
            edge.radius = curve.Circle().Radius();
            edge.centre = from(curve.Circle().Location());
            edge.axis = from(curve.Circle().Axis().Direction());
        } else if (curve.GetType() == GeomAbs_Ellipse) {
            edge.kind = CurveKind::Ellipse;
        }
        for (int i = 0; i <= steps; ++i)
            edge.points.push_back(from(curve.Value(t0 + (t1 - t0) * i / steps)));
        edge.length = edge.kind == CurveKind::Line     ? distance(edge.points[0], edge.points[1])
                      : edge.kind == CurveKind::Circle ? edge.radius * std::abs(t1 - t0)
                                                       : GCPnts_AbscissaPoint::Length(curve);
        if (!std::isfinite(edge.length)) throw std::range_error("an edge has no finite length");
    }

    static void classify(const std::vector<Use>& uses, const BRepAdaptor_Curve& curve, Edge& edge) {
        if (uses.size() < 2) return;
        if (uses[0].number == uses[1].number) {
            edge.convexity = Convexity::Seam;
            return;
        }
        const double middle = (curve.FirstParameter() + curve.LastParameter()) / 2;
        const Vector n0 = outwardAt(uses[0], middle), n1 = outwardAt(uses[1], middle);
        edge.angle = angleBetween(n0, n1);
        if (edge.angle < kTangent) {
            edge.convexity = Convexity::Smooth;
            return;
        }
        gp_Pnt point;
        gp_Vec tangent;
        curve.D1(middle, point, tangent);
        Vector along = from(tangent.XYZ());
        // A face lies to the left of its border, seen from outside.
        if (uses[0].edge.Orientation() == TopAbs_REVERSED) along = -along;
        edge.convexity = dot(cross(n0, n1), along) > 0 ? Convexity::Convex : Convexity::Concave;
    }

    Model& model_;
    const TopoDS_Shape& shape_;
    int solid_, firstFace_ = 0, firstEdge_ = 0;
    const Threads& threads_;
    TopTools_IndexedMapOfShape faces_, edges_, vertices_;
    std::vector<std::vector<Use>> uses_;
};

/// Files seldom have the curves of a flat face's border in its plane; the kernel makes one for each
/// question that needs it, unless it is there.
void drawBordersOfPlanes(const TopoDS_Shape& shape) {
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        const TopoDS_Face& plane = TopoDS::Face(face.Current());
        if (BRepAdaptor_Surface(plane, false).GetType() != GeomAbs_Plane) continue;
        for (TopExp_Explorer edge(plane, TopAbs_EDGE); edge.More(); edge.Next())
            BRepLib::BuildPCurveForEdgeOnPlane(TopoDS::Edge(edge.Current()), plane);
    }
}

}  // namespace

Model snapshot(Bodies& bodies) {
    Model model;
    model.units = bodies.units;
    model.notes = bodies.notes;
    for (const std::string& missing : bodies.leftOut)
        model.damages.push_back({Damage::Kind::Missing, missing, {}, {}});
    BodyReader::Threads threads;
    for (const BodyThread& known : bodies.threads) {
        for (const TopoDS_Shape& face : known.faces)
            threads.emplace(face.TShape().get(), model.threads.size());
        model.threads.push_back(known.thread);
    }
    int vertices = 0;
    for (Body& body : bodies.bodies) {
        int number = 0;
        drawBordersOfPlanes(body.shape);
        if (body.shape.ShapeType() == TopAbs_SOLID) {
            GProp_GProps volume;
            BRepGProp::VolumeProperties(body.shape, volume);
            number = static_cast<int>(model.solids.size()) + 1;
            // Some programs write a solid inside out.
            if (volume.Mass() < 0.0) body.shape.Reverse();
            model.solids.push_back({number, body.name, body.place, std::abs(volume.Mass()), 0.0,
                                    from(volume.CentreOfMass())});
        }
        const std::size_t first = model.edges.size(), firstFace = model.faces.size();
        BodyReader(model, body.shape, number, threads).read();
        for (std::size_t i = firstFace; number > 0 && i < model.faces.size(); ++i)
            model.solids.back().area += model.faces[i].area;
        int most = vertices;
        for (std::size_t i = first; i < model.edges.size(); ++i)
            for (int& vertex : model.edges[i].vertices) {
                if (vertex > 0) vertex += vertices;
                most = std::max(most, vertex);
            }
        vertices = most;
    }
    std::erase_if(model.threads, [](const Thread& thread) { return thread.faces.empty(); });
    return model;
}

}  // namespace corvane::part::reading
