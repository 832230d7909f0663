#include <BRepAlgoAPI_Common.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <sstream>

#include "corvane/part/Part.h"

#include "Shapes.h"
#include "support/TemporaryFolder.h"

using corvane::part::Part;
using corvane::part::Thickness;
using corvane::part::Walls;
using shapes::box;
using shapes::cut;
using shapes::cylinder;
using shapes::fuse;

namespace {

/// The part of a shape, read back from a file of the kind that `ending` says.
std::shared_ptr<const Part> partOf(const TopoDS_Shape& shape, const char* ending = ".brep") {
    const TemporaryFolder folder;
    const std::string file = folder.path(std::string("part") + ending);
    shapes::write(shape, file);
    return Part::open(file).part;
}

TopoDS_Shape prism(std::initializer_list<gp_Pnt> corners, double height) {
    BRepBuilderAPI_MakePolygon polygon;
    for (const gp_Pnt& corner : corners)
        polygon.Add(corner);
    polygon.Close();
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(polygon.Wire()).Shape(),
                                 gp_Vec(0, 0, height))
        .Shape();
}

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
    {"CubeWithSmallRoundings", [] { return shapes::rounded(box(20, 20, 20), 0.5); }, 20, 20},
    {"CubeWithRoundings", [] { return shapes::rounded(box(20, 20, 20), 3); }, 20, 20},
    {"CubeWithLargeRoundings", [] { return shapes::rounded(box(20, 20, 20), 8); }, 20, 20},
    {"RoundedPlate", [] { return shapes::rounded(box(40, 30, 4), 1.5); }, 4, 4},
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
         return prism({{0, 0, 0}, {30, 0, 0}, {30, 12, 0}}, 20);
     },
     20, 20},
    {"ChamferedPlate",
     [] {
         return prism({{0, 0, 0}, {40, 0, 0}, {40, 5, 0}, {37, 8, 0}, {0, 8, 0}}, 30);
     },
     8, 8},
    {"TaperedRib",
     [] {
         return prism({{0, 0, 0}, {4, 0, 0}, {3, 20, 0}, {1, 20, 0}}, 30);
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
         return prism(
             {{0, 0, 0}, {40, 0, 0}, {40, 6, 0}, {24, 6, 0}, {20, 2, 0}, {16, 6, 0}, {0, 6, 0}},
             30);
     },
     6, 2},
    {"Countersink",
     [] {
         return cut(box(30, 30, 6), shapes::cone({{15, 15, 0}, {0, 0, 1}}, 4, 10, 6));
     },
     6, 6},
};

class KnownWalls : public testing::TestWithParam<std::tuple<KnownWall, const char*>> {};

}  // namespace

TEST_P(KnownWalls, AreFound) {
    const auto& [known, ending] = GetParam();
    gp_Trsf turn;
    if (std::string(ending) != ".brep") turn.SetMirror(gp_Ax2({3, 1, -7}, {1, 2, 0.4}));
    const auto part = partOf(shapes::transformed(known.shape(), turn), ending);
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
    const auto part = partOf(fuse(box(60, 40, 8), box(60, 0.8, 12, {0, 20, 8})));
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
