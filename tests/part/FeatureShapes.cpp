#include "FeatureShapes.h"

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <cmath>

#include "Shapes.h"

namespace shapes {
namespace {

using corvane::part::Hole;
using corvane::part::HoleBottom;

constexpr double kCell = 30.0, kHeight = 25.0;
constexpr double kPi = 3.14159265358979323846;

class Random {
public:
    explicit Random(unsigned seed) : random_(seed) {}
    int pick(int choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }
    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(random_() % 10001) / 10000.0;
    }

private:
    std::mt19937 random_;
};

class Driller : Random {
public:
    using Random::Random;

    KnownPart drill() {
        const int columns = 1 + pick(3), rows = 1 + pick(3);
        part_.shape = box(columns * kCell, rows * kCell, kHeight);
        for (int i = 0; i < columns; ++i)
            for (int k = 0; k < rows; ++k)
                addHole({(i + 0.5) * kCell + between(-3, 3), (k + 0.5) * kCell + between(-3, 3),
                         kHeight});
        return part_;
    }

private:
    void addHole(const gp_Pnt& at) {
        const double radius = between(1.5, 4.0);
        Hole hole;
        hole.entry = {at.X(), at.Y(), at.Z()};
        hole.axis = {0, 0, -1};
        hole.diameter = 2 * radius;
        std::vector<Profile> profile;
        double top = 0.0;  // where the main bore begins
        switch (pick(4)) {
            case 0:
                hole.counterboreDiameter = 2 * (radius + between(1, 4));
                top = hole.counterboreDepth = between(1, 6);
                profile = {{0, hole.counterboreDiameter / 2}, {top, hole.counterboreDiameter / 2}};
                break;
            case 1: {
                const double wide = radius + between(0.3, 4);
                hole.countersinkAngle = pick(2) == 0 ? 90.0 : 82.0;
                hole.countersinkDiameter = 2 * wide;
                top = (wide - radius) / std::tan(hole.countersinkAngle / 2 * kPi / 180);
                profile = {{0, wide}};
                break;
            }
            default:
                break;
        }
        profile.push_back({top, radius});
        finish(hole, at, profile, top, radius);
    }

    void finish(Hole& hole, const gp_Pnt& at, std::vector<Profile>& profile, double top,
                double radius) {
        const double end = top + between(3, 10);
        hole.depth = end;
        bool ball = false;
        switch (pick(5)) {
            case 0:
                hole.bottom = HoleBottom::Flat;
                profile.push_back({end, radius});
                break;
            case 1:
                hole.bottom = HoleBottom::Conical;
                hole.bottomAngle = pick(2) == 0 ? 118.0 : 140.0;
                profile.push_back({end, radius});
                profile.push_back({end + radius / std::tan(hole.bottomAngle / 2 * kPi / 180), 0.0});
                break;
            case 2:
                hole.bottom = HoleBottom::Round;
                hole.bottomRadius = radius;
                profile.push_back({end, radius});
                ball = true;
                break;
            case 3: {  // a tapered bore, narrower below
                hole.taperAngle = between(1, 8);
                hole.bottom = HoleBottom::Flat;
                const double narrow =
                    radius - (end - top) * std::tan(hole.taperAngle / 2 * kPi / 180);
                profile.push_back({end, narrow});
                hole.diameter = 2 * narrow;
                break;
            }
            default:
                hole.depth = kHeight;
                profile.push_back({kHeight, radius});
                break;
        }
        hole.boreDepth = hole.depth - top;
        const gp_Ax2 axes(at, gp_Dir(0, 0, -1));
        TopoDS_Shape tool = revolved(axes, profile);
        if (ball)
            tool = fuse(tool, BRepPrimAPI_MakeSphere(
                                  gp_Ax2(gp_Pnt(at.X(), at.Y(), at.Z() - end), gp_Dir(0, 0, 1)),
                                  radius, -kPi / 2, 0.0)
                                  .Shape());
        part_.shape = cut(part_.shape, tool);
        part_.holes.push_back(hole);
    }

    KnownPart part_;
};

class Miller : Random {
public:
    using Random::Random;

    KnownPart mill() {
        const int columns = 1 + pick(3);
        part_.shape = box(columns * 50, 40, kHeight);
        for (int i = 0; i < columns; ++i)
            addPocket(50.0 * i);
        return part_;
    }

private:
    void addPocket(double x) {
        corvane::part::Pocket pocket;
        const bool through = pick(4) == 0, slot = !through && pick(3) == 0;
        const double corner = slot || pick(3) == 0 ? 0.0 : between(2, 5);
        const double floor = corner > 0 && !through && pick(2) == 0 ? between(0.5, 1.5) : 0.0;
        pocket.width = between(12, 20);
        pocket.length = slot ? 40.0 : between(22, 34);
        pocket.depth = pocket.tallestWall = through ? kHeight : between(4, 18);
        pocket.axis = {0, 0, -1};
        pocket.open = slot;
        pocket.sharpCorner = !slot && corner == 0.0;
        pocket.cornerRadius = slot ? corvane::part::kNone : corner;
        pocket.floorRadius = floor;
        const double y = slot ? -5.0 : 3.0;
        part_.shape = cut(
            part_.shape, pocketTool({x + 5, y, through ? -5 : kHeight - pocket.depth}, pocket.width,
                                    slot ? 50 : pocket.length, pocket.depth + 10, corner, floor));
        part_.pockets.push_back(pocket);
        const std::size_t walls = slot ? 2 : corner > 0 ? 8 : 4;
        part_.sharp += (through || floor > 0 ? 0 : walls) + (pocket.sharpCorner ? 4U : 0U);
        part_.sharpWalls += pocket.sharpCorner ? 4U : 0U;
        part_.fillets += (corner > 0 ? 4U : 0U) + (floor > 0 ? 1U : 0U);
    }

    KnownPart part_;
};

/// Rounds the edges whose two ends fit.
template <typename Fits>
TopoDS_Shape filleted(const TopoDS_Shape& shape, double radius, Fits fits) {
    if (radius <= 0.0) return shape;
    BRepFilletAPI_MakeFillet fillet(shape);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges(i));
        const gp_Pnt a = BRep_Tool::Pnt(TopExp::FirstVertex(edge)),
                     b = BRep_Tool::Pnt(TopExp::LastVertex(edge));
        if (fits(a, b)) fillet.Add(radius, edge);
    }
    return fillet.Shape();
}

}  // namespace

TopoDS_Shape revolved(const gp_Ax2& axes, const std::vector<Profile>& profile) {
    BRepBuilderAPI_MakePolygon outline;
    const auto add = [&](double depth, double radius) {
        outline.Add(axes.Location().Translated(gp_Vec(axes.Direction()) * depth +
                                               gp_Vec(axes.XDirection()) * radius));
    };
    add(profile.front().depth, 0.0);
    for (const Profile& point : profile)
        add(point.depth, point.radius);
    if (profile.back().radius > 0.0) add(profile.back().depth, 0.0);
    outline.Close();
    return BRepPrimAPI_MakeRevol(BRepBuilderAPI_MakeFace(outline.Wire()).Shape(), axes.Axis())
        .Shape();
}

TopoDS_Shape pocketTool(const gp_Pnt& low, double x, double y, double z, double corner,
                        double floor) {
    const TopoDS_Shape upright =
        filleted(box(x, y, z, low), corner,
                 [](const gp_Pnt& a, const gp_Pnt& b) { return std::abs(a.Z() - b.Z()) > 1e-6; });
    return filleted(upright, floor, [&](const gp_Pnt& a, const gp_Pnt& b) {
        return std::max(a.Z(), b.Z()) < low.Z() + 1e-6;
    });
}

KnownPart milledBlock(unsigned seed) {
    return Miller(seed).mill();
}

KnownPart drilledBlock(unsigned seed) {
    return Driller(seed).drill();
}

}  // namespace shapes
