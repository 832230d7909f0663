// Flat faces with many borders, which the kernel alone takes for ever to mesh and to check.
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepLib.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRep_Builder.hxx>
#include <Geom2d_Ellipse.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <TopExp_Explorer.hxx>
#include <gp_Ax22d.hxx>
#include <gp_Circ.hxx>
#include <gp_Pln.hxx>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <map>
#include <random>

#include "corvane/part/Part.h"

#include "../../modules/part/Vec.h"
#include "../../modules/part/reading/Delaunay.h"
#include "Shapes.h"
#include "support/TemporaryFolder.h"

using namespace corvane::part;
using reading::Flat;

namespace {

constexpr double kPi = 3.14159265358979323846;

TopoDS_Wire circle(double x, double y, double radius, bool reversed = false) {
    const gp_Ax2 axes({x, y, 0}, {0, 0, reversed ? 1.0 : -1.0});
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(gp_Circ(axes, radius)).Edge());
}

TopoDS_Wire polygon(std::initializer_list<gp_Pnt> corners) {
    BRepBuilderAPI_MakePolygon made;
    for (const gp_Pnt& corner : corners)
        made.Add(corner);
    made.Close();
    return made.Wire();
}

/// A plate with a square of holes of radius 3, 10 mm apart, and one more border.
TopoDS_Shape plate(const TopoDS_Wire& more, int holes = 9, const gp_Trsf& place = {}) {
    const double size = 10.0 * holes + 20;
    BRepBuilderAPI_MakeFace face(gp_Pln({0, 0, 0}, {0, 0, 1}),
                                 polygon({{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}}));
    for (int x = 0; x < holes; ++x)
        for (int y = 0; y < holes; ++y)
            face.Add(circle(10.0 * x + 5, 10.0 * y + 5, 3));
    if (!more.IsNull()) face.Add(more);
    return BRepPrimAPI_MakePrism(face.Face().Moved(place), gp_Vec(0, 0, 4).Transformed(place))
        .Shape();
}

/// A tube with holes of radius 2 in six rows, 10 mm apart along and around it, and one more.
TopoDS_Shape tube(const gp_Pnt2d& place, double radius, bool reversed = false) {
    constexpr double size = 60 / (2 * kPi);
    const Handle(Geom_Surface) surface = new Geom_CylindricalSurface(gp_Ax3(), size);
    TopoDS_Face face = BRepBuilderAPI_MakeFace(surface, 0, 2 * kPi, 0, 80, 1e-6).Face();
    const auto add = [&](double around, double along, double wide, bool other) {
        const gp_Ax22d axes({around / size, along}, {1, 0}, {0, other ? 1.0 : -1.0});
        const Handle(Geom2d_Ellipse) hole = new Geom2d_Ellipse(axes, wide, wide / size);
        // Its long axis is along the tube, for angles are small beside millimetres.
        hole->Rotate({around / size, along}, kPi / 2);
        BRep_Builder().Add(face, BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(hole, surface)));
    };
    for (int i = 0; i < 6; ++i)
        for (int k = 0; k < 6; ++k)
            add(10 * i + 5, 10 * k + 10, 2, false);
    add(place.X(), place.Y(), radius, reversed);
    BRepLib::BuildCurves3d(face);
    return face;
}

std::size_t invalidFaces(const Part& part) {
    const auto& all = part.damages();
    return static_cast<std::size_t>(std::count_if(all.begin(), all.end(), [](const Damage& damage) {
        return damage.kind == Damage::Kind::InvalidFace;
    }));
}

double areaOf(const Flat& a, const Flat& b, const Flat& c) {
    return ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2.0;
}

/// Points in rings, and the area between them.
struct Rings {
    void add(const std::vector<Flat>& ring) {
        const auto first = static_cast<std::uint32_t>(points.size());
        const auto count = static_cast<std::uint32_t>(ring.size());
        for (std::uint32_t i = 0; i < count; ++i) {
            points.push_back(ring[i]);
            lines.push_back({first + i, first + (i + 1) % count});
            area += areaOf({0, 0}, ring[i], ring[(i + 1) % count]);
        }
    }
    void addStar(double x, double y, double radius, int corners, int turn) {
        std::vector<Flat> ring;
        for (int i = 0; i < corners; ++i) {
            const double angle = 2 * kPi * i / corners * turn;
            const double r = radius * (1.0 + 0.3 * std::sin(1e3 * i));
            ring.push_back({x + r * std::cos(angle), y + r * std::sin(angle)});
        }
        add(ring);
    }
    std::vector<Flat> points;
    std::vector<std::array<std::uint32_t, 2>> lines;
    double area = 0.0;
};

class PlatesTest : public testing::Test {
protected:
    std::shared_ptr<const Part> open(const TopoDS_Shape& shape) {
        const std::string file = folder_.path(std::to_string(++count_) + ".brep");
        shapes::write(shape, file);
        return Part::open(file).part;
    }
    TemporaryFolder folder_;
    int count_ = 0;
};

}  // namespace

TEST(DelaunayTest, TrianglesFillWhatIsBetweenRings) {
    Rings squares, stars, teeth;
    squares.add({{0, 0}, {1, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}});
    squares.add({{1, 1}, {1, 2}, {2, 2}, {2, 1}});
    stars.addStar(0, 0, 1000, 500, 1);
    for (int i = -5; i <= 5; ++i)
        stars.addStar(50.0 * i, 60.0 * (i % 3), 15, 60, -1);
    // Long lines between many points.
    std::vector<Flat> comb{{100, -1}, {0, -1}};
    for (int i = 0; i <= 200; ++i)
        comb.push_back({i * 0.5, i % 2 == 0 ? 0.0 : 0.001 * i});
    std::reverse(comb.begin(), comb.end());
    teeth.add(comb);
    for (const Rings* rings : {&squares, &stars, &teeth}) {
        const auto triangles = reading::triangulate(rings->points, rings->lines);
        ASSERT_TRUE(triangles);
        double area = 0.0;
        for (const auto& [a, b, c] : *triangles) {
            const double one = areaOf(rings->points[a], rings->points[b], rings->points[c]);
            EXPECT_GT(one, 0.0);
            area += one;
        }
        EXPECT_NEAR(area / rings->area, 1.0, 1e-7);
    }
}

TEST(DelaunayTest, RingsOnAGridThatTouchAreFilledByTheirCount) {
    std::mt19937 random(7);
    const auto below = [&](int most) { return static_cast<int>(random() >> 8) % most; };
    int filled = 0;
    for (int round = 0; round < 2000; ++round) {
        Rings rings;
        const int size = 2 + below(7);
        for (int count = 1 + below(3); count > 0; --count) {
            std::vector<Flat> ring(static_cast<std::size_t>(1 + below(7)));
            for (Flat& point : ring)
                point = {1.0 * below(size), 1.0 * below(size)};
            rings.add(ring);
        }
        const auto triangles = reading::triangulate(rings.points, rings.lines);
        if (!triangles) continue;
        ++filled;
        // A point between the lines of the grid is inside one triangle, or outside a ring for each.
        const Flat spot{0.3137 + below(size), 0.7713 + below(size)};
        int around = 0, within = 0;
        for (const auto& [from, to] : rings.lines) {
            const Flat &p = rings.points[from], &q = rings.points[to];
            const bool beside = (p.y > spot.y) != (q.y > spot.y);
            if (beside && (areaOf(p, q, spot) > 0.0) == (q.y > p.y)) ++around;
        }
        for (const auto& [a, b, c] : *triangles) {
            const Flat &p = rings.points[a], &q = rings.points[b], &r = rings.points[c];
            const bool in =
                areaOf(p, q, spot) > 0 && areaOf(q, r, spot) > 0 && areaOf(r, p, spot) > 0;
            within += in ? 1 : 0;
        }
        EXPECT_EQ(within, around % 2);
    }
    EXPECT_GT(filled, 100);
}

TEST(DelaunayTest, RingsThatCrossOrDoNotCloseGiveNothing) {
    Rings crossed, open;
    crossed.add({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    crossed.add({{3, 1}, {3, 2}, {5, 2}, {5, 1}});
    open.add({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    open.lines.pop_back();
    EXPECT_FALSE(reading::triangulate(crossed.points, crossed.lines));
    EXPECT_FALSE(reading::triangulate(open.points, open.lines));
    EXPECT_FALSE(reading::triangulate({{NAN, 0}, {1, 0}, {0, 1}}, {{0, 1}, {1, 2}, {2, 0}}));
    EXPECT_FALSE(reading::triangulate({}, {}));
}

TEST_F(PlatesTest, AreMeshedWithoutGaps) {
    gp_Trsf tilted;
    tilted.SetRotation({{3, 4, 5}, {1, 2, 3}}, 0.7);
    for (const auto& [holes, place] : {std::pair(9, tilted), {15, gp_Trsf()}}) {
        const auto part = open(plate(circle(10.0 * holes + 5, 10.0 * holes + 5, 8), holes, place));
        ASSERT_TRUE(part);
        EXPECT_EQ(invalidFaces(*part), 0U);
        const Mesh& mesh = part->mesh();
        std::vector<double> areas(part->model().faces.size() + 1, 0.0);
        double volume = 0.0;
        std::map<std::array<long long, 3>, Vector> borders;
        for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
            const Vector a = mesh.vertices[mesh.triangles[t][0]],
                         b = mesh.vertices[mesh.triangles[t][1]],
                         c = mesh.vertices[mesh.triangles[t][2]];
            areas[static_cast<std::size_t>(mesh.faces[t])] += length(cross(b - a, c - a)) / 2;
            volume += dot(a, cross(b, c)) / 6;
            // Each side is gone along once in each direction, so its ways add up to nothing.
            for (const auto& [p, q] : {std::pair(a, b), std::pair(b, c), std::pair(c, a)}) {
                const Vector middle = (p + q) * 0.5 * 1e4;
                Vector& sum = borders[{std::llround(middle.x), std::llround(middle.y),
                                       std::llround(middle.z)}];
                sum = sum + q - p;
            }
        }
        EXPECT_NEAR(volume / part->volume(), 1.0, 2e-3);
        for (const Face& face : part->model().faces)
            EXPECT_NEAR(areas[static_cast<std::size_t>(face.number)] / face.area, 1.0, 2e-3);
        for (const auto& [middle, sum] : borders)
            EXPECT_LT(length(sum), 1e-6);
    }
}

TEST_F(PlatesTest, AreCheckedAsTheKernelChecksThem) {
    struct Row {
        const char* what;
        TopoDS_Shape shape;
        bool isSound;
    };
    const Row rows[] = {
        {"apart", plate(circle(100, 100, 5)), true},
        {"beside others by their boxes", plate(circle(50, 50, 1.5)), true},
        {"crosses a hole", plate(circle(48, 45, 3)), false},
        {"crosses the outer border", plate(circle(108, 108, 5)), false},
        {"around a hole", plate(circle(45, 45, 4)), false},
        {"in a hole", plate(circle(45, 45, 2)), false},
        {"outside", plate(circle(200, 200, 5)), false},
        {"the wrong way round", plate(circle(100, 100, 5, true)), false},
        {"around many holes", plate(circle(45, 45, 30)), false},
        {"crosses itself", plate(polygon({{95, 95, 0}, {105, 105, 0}, {105, 95, 0}, {95, 105, 0}})),
         false},
        {"apart on a tube", tube({25, 70}, 2), true},
        {"crosses on a tube", tube({26, 30}, 2), false},
        {"around on a tube", tube({25, 30}, 4), false},
        {"in a hole of a tube", tube({25, 30}, 1), false},
        {"around many on a tube", tube({30, 35}, 17), false},
        {"the wrong way round on a tube", tube({25, 70}, 2, true), false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const BRepCheck_Analyzer kernel(row.shape);
        std::size_t invalid = 0;
        for (TopExp_Explorer it(row.shape, TopAbs_FACE); it.More(); it.Next())
            invalid += kernel.IsValid(it.Current()) ? 0 : 1;
        EXPECT_EQ(invalid == 0, row.isSound);
        const auto part = open(row.shape);
        ASSERT_TRUE(part);
        EXPECT_EQ(invalidFaces(*part), invalid);
    }
}
