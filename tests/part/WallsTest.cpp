#include <BRepAlgoAPI_Common.hxx>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sstream>

#include "FeatureChecks.h"

using namespace corvane::part;
using namespace shapes;

namespace {

TopoDS_Shape round(double x, double y, double z, double radius, double height) {
    return cylinder({{x, y, z}, {0, 0, 1}}, radius, height);
}

struct KnownWall {
    const char* name;
    std::function<TopoDS_Shape()> shape;
    double ray, sphere;  // the smallest; 0 where no wall is
};

std::ostream& operator<<(std::ostream& out, const KnownWall& wall) {
    return out << wall.name;
}

const KnownWall kWalls[] = {
    {"Cube", [] { return box(20, 20, 20); }, 20, 20},
    {"Plate", [] { return box(200, 150, 3); }, 3, 3},
    {"CubeWithSmallRoundings", [] { return rounded(box(20, 20, 20), 0.5); }, 20, 20},
    {"CubeWithRoundings", [] { return rounded(box(20, 20, 20), 3); }, 20, 20},
    {"CubeWithLargeRoundings", [] { return rounded(box(20, 20, 20), 8); }, 20, 20},
    {"RoundedPlate", [] { return rounded(box(40, 30, 4), 1.5); }, 4, 4},
    {"HollowBox",
     [] {
         return cut(box(40, 30, 20), box(35, 26, 17, {2.5, 2, 1.5}));
     },
     1.5, 1.5},
    {"SteppedPlate",
     [] {
         return cut(box(60, 40, 10), box(30, 40, 6, {30, 0, 4}));
     },
     4, 4},
    {"Tube", [] { return cut(round(0, 0, 0, 10, 30), round(0, 0, -1, 8.8, 32)); }, 1.2, 1.2},
    {"OffsetBore", [] { return cut(round(0, 0, 0, 10, 30), round(1, 0, -1, 8, 32)); }, 1, 1},
    {"Pin", [] { return round(0, 0, 0, 1.5, 40); }, 3, 3},
    {"Wedge",
     [] {
         return extruded({{0, 0, 0}, {30, 0, 0}, {30, 12, 0}}, 20);
     },
     20, 20},
    {"ChamferedPlate",
     [] {
         return extruded({{0, 0, 0}, {40, 0, 0}, {40, 5, 0}, {37, 8, 0}, {0, 8, 0}}, 30);
     },
     8, 8},
    {"TaperedRib",
     [] {
         return extruded({{0, 0, 0}, {4, 0, 0}, {3, 20, 0}, {1, 20, 0}}, 30);
     },
     2.0075, 2.0025},
    {"ThinRib",
     [] {
         return fuse(box(60, 40, 8), box(60, 0.8, 12, {0, 20, 8}));
     },
     0.8, 0.8},
    {"BlindHole", [] { return cut(box(80, 80, 10), round(31, 47, 0.6, 1.5, 20)); }, 0.6, 0.6},
    {"CrossedGrooves",
     [] {
         return cut(cut(box(100, 100, 9), box(3, 100, 4, {71, 0, 0})), box(100, 3, 4, {0, 13, 5}));
     },
     1, 1},
    {"GrooveAboveFlat",
     [] {
         return extruded(
             {{0, 0, 0}, {40, 0, 0}, {40, 6, 0}, {24, 6, 0}, {20, 2, 0}, {16, 6, 0}, {0, 6, 0}},
             30);
     },
     6, 2},
    {"Countersink",
     [] {
         return cut(box(30, 30, 6), cone({{15, 15, 0}, {0, 0, 1}}, 4, 10, 6));
     },
     6, 6},
};

class KnownWalls : public testing::TestWithParam<std::tuple<KnownWall, const char*>> {};

}  // namespace

TEST_P(KnownWalls, AreFound) {
    const auto& [known, ending] = GetParam();
    gp_Trsf turn;
    if (std::string(ending) != ".brep") turn.SetMirror(gp_Ax2({3, 1, -7}, {1, 2, 0.4}));
    const auto part = partOf(transformed(known.shape(), turn), ending);
    ASSERT_TRUE(part);
    const Walls& walls = part->walls();
    ASSERT_TRUE(walls.measurable);
    const double slack = part->model().isMesh ? 0.012 : 5e-4;
    EXPECT_NEAR(walls.smallestByRay.value, known.ray, slack * known.ray);
    EXPECT_NEAR(walls.smallestBySphere.value, known.sphere, slack * known.sphere);
}

INSTANTIATE_TEST_SUITE_P(Shapes, KnownWalls,
                         testing::Combine(testing::ValuesIn(kWalls),
                                          testing::Values(".brep", ".stl")),
                         [](const auto& entry) {
                             return std::string(std::get<0>(entry.param).name) +
                                    (std::get<1>(entry.param)[1] == 'b' ? "" : "OfFacets");
                         });

TEST(WallsTest, WhatEnclosesNothingIsNotMeasured) {
    const TemporaryFolder folder;
    // Three sides of a box, facets without area, and numbers beyond any part.
    for (const char* facets : {"0 0 0 1 0 0 0 1 0 0 0 0 0 0 1 1 0 0 0 0 0 0 1 0 0 0 1",
                               "0 0 0 1 1 1 2 2 2 0 0 0 0 0 0 0 0 0",
                               "0 0 0 1e200 0 0 0 1e200 0 0 0 0 0 0 1e300 1 0 0"}) {
        std::istringstream numbers(facets);
        std::string text = "solid x\n", x, y, z;
        for (int i = 0; numbers >> x >> y >> z; ++i) {
            if (i % 3 == 0) text += "facet normal 0 0 0\nouter loop\n";
            text += "vertex " + x + ' ' + y + ' ' + z + '\n';
            if (i % 3 == 2) text += "endloop\nendfacet\n";
        }
        folder.write("hostile.stl", text + "endsolid\n");
        const auto part = Part::open(folder.path("hostile.stl")).part;
        if (!part) continue;
        const Walls& walls = part->walls();
        EXPECT_FALSE(walls.measurable) << facets;
        EXPECT_TRUE(walls.places.empty() && walls.placesByRay.empty());
        EXPECT_EQ(walls.smallestByRay.value, 0.0);
    }
}

TEST(WallsTest, PlacesAreOnTheFacesThatTheyName) {
    const auto part = partOf(fuse(box(60, 40, 8), box(60, 0.8, 12, {0, 20, 8})), ".brep");
    ASSERT_TRUE(part);
    const Walls& walls = part->walls();
    ASSERT_EQ(walls.places.size(), part->model().faces.size());
    const Thickness& rib = walls.places.front();
    EXPECT_NE(rib.faces[0], rib.faces[1]);
    EXPECT_NEAR(std::abs(rib.point.y - rib.opposite.y), 0.8, 1e-9);
    EXPECT_GT(rib.point.z, 8.0);
    EXPECT_NEAR(walls.largestBySphere.value, 60.0, 1e-3);
    EXPECT_EQ(walls.byVertex.size(), part->mesh().vertices.size());
}

TEST(WallsTest, EachSeparateThinPlaceOfAFaceIsTold) {
    const auto pit = [](double x, double floor) { return box(14, 14, 9, {x, 13, floor - 9}); };
    const TopoDS_Shape two = cut(cut(box(90, 40, 8), pit(8, 7)), pit(48, 6.8));
    const struct {
        TopoDS_Shape shape;
        std::vector<double> top;  // what is told of the face on top
    } cases[]{
        {box(90, 40, 8), {8}},
        {two, {1, 1.2}},
        {cut(two, pit(72, 7.5)), {0.5, 1, 1.2}},
        {cut(two, box(56, 14, 9, {8, 13, -2})), {1}},  // one pit from end to end
    };
    for (const auto& [shape, top] : cases)
        for (const char* ending : {".brep", ".stl"}) {
            const auto part = partOf(shape, ending);
            ASSERT_TRUE(part);
            std::vector<double> found;
            for (const Thickness& place : part->walls().places)
                if (place.point.z > 7.99 && part->model().face(place.faces[0]).normal.z > 0.9)
                    found.push_back(place.value);
            ASSERT_EQ(found.size(), top.size()) << ending << ' ' << top.size();
            for (std::size_t i = 0; i < top.size(); ++i)
                EXPECT_NEAR(found[i], top[i], 1e-4);
        }
}

namespace {

Vector minus(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vector across(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Every facet against every ray, as slow and as plain as it gets.
class BruteForce {
public:
    explicit BruteForce(const Part& part) {
        for (const auto& edge : part.model().edges)
            if (edge.convexity == corvane::part::Convexity::Convex)
                sharp_.insert(std::minmax(edge.faces[0], edge.faces[1]));
        for (std::size_t i = 0; i < part.mesh().triangles.size(); ++i) {
            const auto& t = part.mesh().triangles[i];
            const auto& v = part.mesh().vertices;
            const Vector n = across(minus(v[t[1]], v[t[0]]), minus(v[t[2]], v[t[0]]));
            const double size = std::sqrt(product(n, n));
            facets_.push_back({v[t[0]],
                               minus(v[t[1]], v[t[0]]),
                               minus(v[t[2]], v[t[0]]),
                               {n.x / size, n.y / size, n.z / size},
                               part.mesh().faces[i]});
        }
    }

    /// The thinnest wall among those square to a grid of places on each facet.
    [[nodiscard]] double thinnest(int steps) const {
        double least = 1e300;
        for (const Facet& facet : facets_)
            for (int i = 0; i < steps; ++i)
                for (int k = 0; i + k < steps; ++k) {
                    const double u = (i + 0.33) / steps, v = (k + 0.33) / steps;
                    const Vector p{facet.a.x + facet.ab.x * u + facet.ac.x * v,
                                   facet.a.y + facet.ab.y * u + facet.ac.y * v,
                                   facet.a.z + facet.ab.z * u + facet.ac.z * v};
                    const auto [length, slope, face] = rayFrom(p, facet.normal);
                    const bool edge = sharp_.count(std::minmax(face, facet.face)) > 0;
                    if (slope < (edge ? -0.985 : -0.867)) least = std::min(least, length);
                }
        return least;
    }

    struct End {
        double length = 1e300, slope = 0.0;
        int face = 0;
    };
    /// The first facet from a place against the direction `n` that looks away from it.
    [[nodiscard]] End rayFrom(const Vector& p, const Vector& n) const {
        End end;
        for (const Facet& facet : facets_) {
            const double slope = product(n, facet.normal);
            if (slope > -1e-9) continue;
            const Vector from = minus(facet.a, p);
            const double t = product(from, facet.normal) / -slope;
            const Vector q{-from.x - n.x * t, -from.y - n.y * t, -from.z - n.z * t};
            const double u = product(across(q, facet.ac), facet.normal),
                         v = product(across(facet.ab, q), facet.normal),
                         all = product(across(facet.ab, facet.ac), facet.normal);
            // Places may be as good as on the border of a face.
            const double border = 1e-4 * all;
            if (t < 1e-6 || t >= end.length || u < -border || v < -border || u + v > all + border)
                continue;
            end = {t, slope, facet.face};
        }
        return end;
    }

private:
    struct Facet {
        Vector a, ab, ac, normal;
        int face;
    };
    std::vector<Facet> facets_;
    std::set<std::pair<int, int>> sharp_;
};

}  // namespace

TEST(WallsTest, RandomPartsAreAsThinAsBruteForceFinds) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto pick = [&](int from, int to) {
            return from + 0.37 * static_cast<double>(random() % static_cast<unsigned>(to - from));
        };
        TopoDS_Shape shape = box(60, 50, 12);
        for (int i = 0; i < 3; ++i) {
            const double length = pick(4, 20), width = pick(4, 20), x = pick(-3, 99),
                         y = pick(-3, 99), z = pick(1, 24);
            shape = cut(shape, box(length, width, 20, {x, y, z}));
            const double axisX = pick(3, 120), axisY = pick(3, 99), floor = pick(1, 24),
                         radius = pick(1, 12);
            shape = cut(shape, round(axisX, axisY, floor, radius, 20));
        }
        const auto part = partOf(shape, ".brep");
        ASSERT_TRUE(part);
        const BruteForce brute(*part);
        const Walls& walls = part->walls();
        // No thicker than what the grid finds; and where it is thinner than that, a plain ray from
        // its place must find the same, but for how far facets may be off the surface.
        const double found = brute.thinnest(12);
        EXPECT_LE(walls.smallestByRay.value, found * 1.02 + 0.01);
        // Where a wall ends because its sides part, it may end a little sooner for the sphere.
        EXPECT_LE(walls.smallestBySphere.value, walls.smallestByRay.value * 1.03);
        for (const Thickness& place : {walls.smallestByRay, walls.smallestBySphere}) {
            const Vector chord = minus(place.point, place.opposite);
            const double size = std::sqrt(product(chord, chord));
            const Vector out{chord.x / size, chord.y / size, chord.z / size};
            const Vector start{place.point.x - out.x * size / 2, place.point.y - out.y * size / 2,
                               place.point.z - out.z * size / 2};
            const Vector in{-out.x, -out.y, -out.z};
            EXPECT_NEAR(brute.rayFrom(start, out).length + brute.rayFrom(start, in).length, size,
                        0.04 + 0.02 * size);
        }
    }
}

TEST(GapsTest, NarrowAirIsFoundBetweenWallsAndBetweenSolids) {
    const TopoDS_Shape bearing =
        compound({cut(round(0, 0, 0, 20, 15), round(0, 0, -1, 10, 17)), round(0, 0, 0, 9.7, 15)});
    const TopoDS_Shape touching =
        compound({box(20, 20, 5), box(20, 20, 5, {0, 0, 5}), box(20, 20, 5, {0, 0, 12})});
    const std::pair<TopoDS_Shape, double> cases[] = {
        {bearing, 0.3},
        {touching, 2.0},
        {cut(box(60, 40, 20), box(1.5, 40, 12, {30, 0, 8})), 1.5},
        {cut(box(60, 40, 20), round(30, 20, -1, 1.5, 22)), 3.0},
        {cut(box(60, 40, 20), extruded({{20, 20, 0}, {30, 40, 0}, {10, 40, 0}}, 20)), 0.0},
        {box(10, 20, 30), 0.0}};
    for (const auto& [shape, gap] : cases)
        for (const char* ending : {".brep", ".stl"}) {
            const auto part = partOf(shape, ending);
            ASSERT_TRUE(part);
            const auto& places = part->gaps().places;
            ASSERT_EQ(places.empty(), gap == 0.0) << gap << ending;
            if (places.empty()) continue;
            EXPECT_NEAR(places.front().value, gap, gap * (part->model().isMesh ? 0.02 : 5e-4));
        }
}

TEST(GapsTest, EachSeparateNarrowPlaceBetweenTwoFacesIsTold) {
    // A groove that is wider below, and a cut that takes the middle of its narrow mouth away.
    const TopoDS_Shape groove =
        cut(box(60, 20, 40),
            extruded({{28.5, 8, 0}, {31.5, 8, 0}, {30.75, 20, 0}, {29.25, 20, 0}}, 40));
    const std::pair<TopoDS_Shape, std::size_t> cases[] = {
        {groove, 1}, {cut(groove, box(20, 6, 10, {20, 14, 15})), 2}};
    for (const auto& [shape, mouths] : cases)
        for (const char* ending : {".brep", ".stl"}) {
            const auto part = partOf(shape, ending);
            ASSERT_TRUE(part);
            std::vector<double> ends;
            for (const Thickness& place : part->gaps().places)
                if (place.value < 2.0) {
                    EXPECT_NEAR(place.value, 1.5, 0.02) << ending;
                    ends.push_back(place.point.z);
                }
            ASSERT_EQ(ends.size(), mouths) << ending;
            // On both sides of the cut.
            EXPECT_EQ(std::abs(ends.front() - ends.back()) >= 10.0, mouths == 2);
        }
}
