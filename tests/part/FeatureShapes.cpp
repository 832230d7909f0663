#include "FeatureShapes.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeWedge.hxx>
#include <BRep_Tool.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
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

    KnownPart millAndDrill() {
        const int columns = 1 + pick(3);
        part_.shape = box(columns * 50, 40, kHeight);
        for (int i = 0; i < columns; ++i) {
            addPocket(50.0 * i);
            const corvane::part::Pocket& pocket = part_.pockets.back();
            if (!pocket.open && pocket.depth < kHeight)
                addHole({50.0 * i + 5 + pocket.width / 2, 3 + pocket.length / 2,
                         kHeight - pocket.depth},
                        between(1, 2.5), kHeight - pocket.depth, false);
            const double depth = between(5, 15), radius = between(1.5, 4);
            addHole({50.0 * i + 38, 12, kHeight}, radius, depth, true);
        }
        return part_;
    }

private:
    void addHole(const gp_Pnt& at, double radius, double depth, bool blind) {
        Hole hole;
        hole.entry = {at.X(), at.Y(), at.Z()};
        hole.axis = {0, 0, -1};
        hole.diameter = 2 * radius;
        hole.depth = hole.boreDepth = depth;
        std::vector<Profile> profile{{0, radius}, {depth, radius}};
        if (blind) {
            hole.bottom = HoleBottom::Conical;
            hole.bottomAngle = 118.0;
            profile.push_back({depth + radius / std::tan(59 * kPi / 180), 0.0});
        }
        part_.shape = cut(part_.shape, revolved({at, {0, 0, -1}}, profile));
        part_.holes.push_back(hole);
    }

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

class Turner : Random {
public:
    using Random::Random;

    KnownPart turn() {
        const int count = 2 + pick(4);
        double place = 0.0, radius = between(8, 20);
        for (int i = 0; i < count; ++i) {
            const double length = between(32, 50);  // no groove by its width
            const double end = pick(4) == 0 ? radius - between(0.5, 2) : radius;
            add(place, length, radius, end);
            place += length;
            if (i + 1 < count && pick(2) == 0) {
                const double next = between(8, 20), depth = between(0.5, 2), width = between(1, 4);
                const double bottom = std::min(end, next) - depth;
                add(place, width, bottom, bottom);
                corvane::part::Groove groove;
                groove.width = width;
                groove.depth = depth;
                groove.diameter = 2 * bottom;
                part_.turned.grooves.push_back(groove);
                place += width;
                radius = next;
            } else {
                // Thick enough for a groove to be no neck.
                radius = end + (pick(2) == 0 || end < 10.5 ? 2.5 : -2.5);
            }
        }
        part_.turned.length = place;
        part_.shape = revolved({{3, 4, 5}, {1, 2, 2}}, profile_);
        if (pick(2) == 0) {
            part_.shape = cut(part_.shape, revolved({{3, 4, 5}, {1, 2, 2}}, {{0, 2}, {10, 2}}));
            part_.turned.sections.push_back({true, 0, 10, 4, 4, 0, {}});
        }
        return part_;
    }

private:
    void add(double start, double length, double from, double to) {
        profile_.push_back({start, from});
        profile_.push_back({start + length, to});
        const double taper = 2 * std::atan(std::abs(from - to) / length) * 180 / kPi;
        part_.turned.sections.push_back({false, start, length, 2 * from, 2 * to, taper, {}});
        part_.turned.diameter = std::max({part_.turned.diameter, 2 * from, 2 * to});
    }

    std::vector<Profile> profile_;
    KnownPart part_;
};

/// Walks along the middle of a strip and keeps both of its outlines.
class Bender : Random {
public:
    using Random::Random;

    KnownPart bend() {
        const double width = between(30, 60), hole = between(1, 3);
        thickness_ = between(0.8, 3);
        part_.sheet.thickness = thickness_;
        const int bends = 1 + pick(3);
        const double first = between(20, 40);
        flat(first);
        double before = first;
        for (int i = 0; i < bends; ++i) {
            const double radius = between(0.5, 4), angle = between(30, 120);
            arc(radius, angle * (i % 2 == 0 ? 1.0 : -1.0));
            const double after = between(20, 40);
            flat(after);
            corvane::part::Bend bend;
            bend.innerRadius = radius;
            bend.angle = angle;
            bend.length = width;
            bend.flangeLength =
                std::min(before, after) +
                (radius + thickness_) * std::tan(std::min(angle, 90.0) / 2 * kPi / 180);
            part_.sheet.bends.push_back(bend);
            before = after;
        }
        BRepBuilderAPI_MakeWire wire;
        for (const TopoDS_Edge& edge : left_)
            wire.Add(edge);
        wire.Add(BRepBuilderAPI_MakeEdge(side(1), side(-1)).Edge());
        for (auto edge = right_.rbegin(); edge != right_.rend(); ++edge)
            wire.Add(*edge);
        wire.Add(
            BRepBuilderAPI_MakeEdge(gp_Pnt(0, -thickness_ / 2, 0), gp_Pnt(0, thickness_ / 2, 0))
                .Edge());
        part_.shape =
            BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(wire.Wire()).Shape(), gp_Vec(0, 0, width))
                .Shape();
        const double x = between(8, first - 8);
        part_.shape = cut(part_.shape, cylinder({{x, -9, width / 2}, {0, 1, 0}}, hole, 18));
        part_.sheet.holes.push_back({1, first - x - hole, 1, std::min(x, width / 2) - hole});
        return part_;
    }

private:
    [[nodiscard]] gp_Pnt side(double sign) const {
        const gp_Vec out(-std::sin(turn_), std::cos(turn_), 0);
        return at_.Translated(out * (sign * thickness_ / 2));
    }
    void flat(double length) {
        const gp_Pnt left = side(1), right = side(-1);
        at_.Translate(gp_Vec(std::cos(turn_), std::sin(turn_), 0) * length);
        left_.push_back(BRepBuilderAPI_MakeEdge(left, side(1)).Edge());
        right_.push_back(BRepBuilderAPI_MakeEdge(right, side(-1)).Edge());
    }
    void arc(double radius, double angle) {
        const gp_Pnt left = side(1), right = side(-1);
        const double sign = angle > 0 ? 1.0 : -1.0, middle = radius + thickness_ / 2;
        const gp_Pnt centre =
            at_.Translated(gp_Vec(-std::sin(turn_), std::cos(turn_), 0) * (sign * middle));
        const auto go = [&](double share) {
            gp_Trsf by;
            by.SetRotation({centre, {0, 0, 1}}, angle * share * kPi / 180);
            return by;
        };
        for (const auto& [from, edges] : {std::pair{left, &left_}, {right, &right_}})
            edges->push_back(
                BRepBuilderAPI_MakeEdge(
                    GC_MakeArcOfCircle(from, from.Transformed(go(0.5)), from.Transformed(go(1)))
                        .Value())
                    .Edge());
        at_.Transform(go(1));
        turn_ += angle * kPi / 180;
    }

    double thickness_ = 1.0, turn_ = 0.0;
    gp_Pnt at_{0, 0, 0};
    std::vector<TopoDS_Edge> left_, right_;
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

KnownPart machinedBlock(unsigned seed) {
    return Miller(seed).millAndDrill();
}

KnownPart draftedCup(unsigned seed) {
    Random random(seed);
    const double length = random.between(30, 60), width = random.between(20, 40);
    const double height = random.between(15, 30), floor = random.between(1, 4);
    KnownPart cup;
    cup.draft = random.between(0.5, 6);
    cup.drafted = 8;
    const double wall = random.between(1, 4);
    cup.wall = std::min(floor, wall);
    const double slope = std::tan(cup.draft * kPi / 180);
    /// Grown by `in` on each side from the outline on the ground, from `low` to `high`.
    const auto frustum = [&](double in, double low, double high) {
        const double a = in + low * slope, b = (high - low) * slope;
        const double x = length + 2 * a, y = width + 2 * a;
        return BRepPrimAPI_MakeWedge(gp_Ax2({-a, -a, low}, {1, 0, 0}, {0, 1, 0}), y, high - low, x,
                                     -b, -b, y + b, x + b)
            .Shape();
    };
    const double inset = wall / std::cos(cup.draft * kPi / 180);
    cup.shape = cut(frustum(0, 0, height), frustum(-inset, floor, height + 5));
    return cup;
}

KnownPart shaft(unsigned seed) {
    return Turner(seed).turn();
}

KnownPart bentStrip(unsigned seed) {
    return Bender(seed).bend();
}

KnownPart milledBlock(unsigned seed) {
    return Miller(seed).mill();
}

KnownPart drilledBlock(unsigned seed) {
    return Driller(seed).drill();
}

}  // namespace shapes
