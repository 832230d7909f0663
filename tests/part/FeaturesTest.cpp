#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <map>
#include <numbers>

#include "corvane/part/Part.h"

#include "../../modules/part/features/Holes.h"
#include "../../modules/part/features/Pockets.h"
#include "../../modules/part/features/SheetMetal.h"
#include "../../modules/part/features/Turned.h"
#include "FeatureChecks.h"
#include "FeatureShapes.h"

using namespace corvane::part;
using namespace shapes;

namespace {

TopoDS_Shape bar(double x, double y, double z, const gp_Dir& along, double radius, double length) {
    return cylinder({{x, y, z}, along}, radius, length);
}
const gp_Dir kX(1, 0, 0), kY(0, 1, 0), kZ(0, 0, 1);

/// A plate of 60 x 40 x 20 less what is cut.
TopoDS_Shape plate(std::initializer_list<TopoDS_Shape> tools) {
    TopoDS_Shape shape = box(60, 40, 20);
    for (const TopoDS_Shape& tool : tools)
        shape = cut(shape, tool);
    return shape;
}

constexpr double kAny = -1.0;

struct Expected {
    double diameter, depth;
    double turn = 360, edge = kAny, wall = kAny, between = kAny, free = kAny;
};
struct Case {
    const char* name;
    std::function<TopoDS_Shape()> shape;
    std::vector<Expected> holes;  // by diameter and depth
    std::function<void(const Part&)> more = {};
};
std::ostream& operator<<(std::ostream& out, const Case& given) {
    return out << given.name;
}

void expectCase(const Part& part, const std::vector<Expected>& truth) {
    std::vector<Hole> found = part.holes();
    std::stable_sort(found.begin(), found.end(), [](const Hole& l, const Hole& r) {
        return std::abs(l.diameter - r.diameter) > kExact ? l.diameter < r.diameter
                                                          : l.depth < r.depth - kExact;
    });
    ASSERT_EQ(found.size(), truth.size());
    for (std::size_t i = 0; i < truth.size(); ++i) {
        const Expected& expected = truth[i];
        for (const auto& [name, is, should] :
             {std::tuple{"diameter", found[i].diameter, expected.diameter},
              {"depth", found[i].depth, expected.depth},
              {"turn", found[i].turn, expected.turn},
              {"edge", found[i].edgeDistance, expected.edge},
              {"wall", found[i].wallDistance, expected.wall},
              {"between", found[i].holeDistance, expected.between},
              {"free", found[i].freeLength, expected.free}})
            EXPECT_NEAR(is, should == kAny ? is : should, kExact) << name << " of " << i;
    }
}

}  // namespace

class Cases : public testing::TestWithParam<Case> {};

TEST_P(Cases, AreFoundInAnyPlace) {
    for (const unsigned seed : {0U, 1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        const auto part = partOf(transformed(GetParam().shape(), placement(seed)));
        ASSERT_TRUE(part);
        expectCase(*part, GetParam().holes);
        if (GetParam().more) GetParam().more(*part);
    }
}

double turnWithout(double half, double radius) {
    return 360.0 - 2.0 * std::asin(half / radius) * 180.0 / std::numbers::pi;
}

INSTANTIATE_TEST_SUITE_P(
    Holes, Cases,
    testing::Values(
        Case{"joined bodies",  // whose seam is no edge, not even through a hole
             [] {
                 const TopoDS_Shape joined = fuse(box(30, 40, 20), box(30, 40, 20, {30, 0, 0}));
                 return cut(cut(joined, bar(27, 20, 0, kZ, 2, 20)), bar(30, 30, 0, kZ, 3, 20));
             },
             {{4, 20, 360, 18}, {6, 20, 360, 7}}},
        Case{"inclined",
             [] {
                 const gp_Dir along(std::sin(std::numbers::pi / 6), 0,
                                    std::cos(std::numbers::pi / 6));
                 return plate({bar(10, 20, -20, along, 4, 80)});
             },
             {{8, 24 / std::cos(std::numbers::pi / 6)}},
             [](const Part& part) {
                 EXPECT_NEAR(part.holes()[0].entryAngle, 30.0, kExact);
                 EXPECT_FALSE(part.holes()[0].squareEntry || part.holes()[0].squareExit);
             }},
        Case{"across a shaft",
             [] { return cut(bar(0, 0, 0, kZ, 20, 60), bar(-30, 0, 30, kX, 3, 60)); },
             {{6, 40}},
             [](const Part& part) {
                 EXPECT_FALSE(part.holes()[0].squareEntry);
                 EXPECT_NEAR(part.holes()[0].entryAngle, 0.0, 1e-4);
             }},
        Case{"crossing, equal",
             [] {
                 return cut(cut(box(40, 40, 40), bar(-1, 20, 20, kX, 5, 50)),
                            bar(20, -1, 20, kY, 5, 50));
             },
             {{10, 40}, {10, 40}}},
        Case{"crossed by a wider one",
             [] {
                 return cut(cut(box(40, 40, 40), bar(-1, 20, 20, kX, 3, 50)),
                            bar(20, -1, 20, kY, 8, 50));
             },
             {{6, 40}, {16, 40}}},
        Case{"through both walls of a tube",
             [] {
                 return cut(cut(bar(0, 0, 0, kZ, 30, 60), bar(0, 0, -1, kZ, 25, 62)),
                            bar(-40, 0, 30, kX, 2, 80));
             },
             {{4, 30 - std::sqrt(25 * 25 - 4.0)},
              {4, 30 - std::sqrt(25 * 25 - 4.0)},
              {50, 60, 360, 5}},
             [](const Part& part) {
                 std::size_t aligned = 0;
                 for (const Hole& hole : part.holes())
                     aligned += hole.aligned.size();
                 EXPECT_EQ(aligned, 2U);
             }},
        Case{"through a bracket",
             [] {
                 return cut(cut(box(60, 40, 30), box(40, 40, 25, {10, 0, 5})),
                            bar(-1, 20, 20, kX, 4, 70));
             },
             {{8, 10, 360, 6}, {8, 10, 360, 6}}},
        Case{"a pit with a slender tip",
             [] {
                 return plate({cone({{30, 20, 20}, {0, 0, -1}}, 3, 0, 12)});
             },
             {{6, 12}}},
        Case{"with a keyway",
             [] {
                 return plate({bar(30, 20, -1, kZ, 10, 22), box(3, 14, 22, {28.5, 20, -1})});
             },
             {{20, 20, turnWithout(1.5, 10), 10}}},
        Case{"broken out of a side",
             [] { return plate({bar(30, 3, -1, kZ, 5, 22)}); },
             {{10, 20, turnWithout(4, 5), 0}}},
        Case{"slots, round pockets and an inner corner's rounding",
             [] {
                 return plate({box(20, 8, 22, {10, 10, -1}), bar(10, 14, -1, kZ, 4, 22),
                               bar(30, 14, -1, kZ, 4, 22), bar(60, 40, 10, kZ, 12, 12)});
             },
             {}},
        Case{"an obround through a plate",
             [] {
                 return plate({box(20, 8, 22, {20, 16, -1}), bar(20, 20, -1, kZ, 4, 22),
                               bar(40, 20, -1, kZ, 4, 22)});
             },
             {},
             [](const Part& part) {
                 ASSERT_EQ(part.pockets().size(), 1U);
                 const Pocket& pocket = part.pockets()[0];
                 EXPECT_EQ(pocket.floor, 0);
                 EXPECT_NEAR(pocket.width, 8, kExact);
                 EXPECT_NEAR(pocket.length, 28, kExact);
                 EXPECT_NEAR(pocket.cornerRadius, 4, kExact);
                 EXPECT_TRUE(part.fillets().empty() && part.sharpCorners().empty());
             }},
        Case{"a step with rounded edges, and all edges of a box",
             [] {
                 return compound(
                     {rounded(box(60, 40, 20), 3),
                      cut(box(60, 40, 20, {0, 100, 0}), box(30, 40, 10, {30, 100, 10}))});
             },
             {},
             [](const Part& part) {
                 EXPECT_TRUE(part.pockets().empty());
                 ASSERT_EQ(part.fillets().size(), 1U);
                 EXPECT_NEAR(part.fillets()[0].radius, 3, kExact);
                 EXPECT_FALSE(part.fillets()[0].concave);
                 EXPECT_NEAR(part.fillets()[0].length, 4 * (54 + 34 + 14), kExact);
                 ASSERT_EQ(part.sharpCorners().size(), 1U);
                 EXPECT_NEAR(part.sharpCorners()[0].angle, 90, kExact);
                 EXPECT_NEAR(part.sharpCorners()[0].length, 40, kExact);
                 EXPECT_FALSE(part.sharpCorners()[0].pocketWall);
             }},
        Case{"a sheet with a sharp bend",
             [] {
                 const TopoDS_Shape corner =
                     common(bar(2, 0, 2, kY, 2, 40), box(2, 40, 2, {0, 0, 0}));
                 return fuse(fuse(box(58, 40, 2, {2, 0, 0}), box(2, 40, 28, {0, 0, 2})), corner);
             },
             {},
             [](const Part& part) {
                 const SheetMetal& sheet = part.sheetMetal();
                 ASSERT_EQ(sheet.bends.size(), 1U) << sheet.reason;
                 EXPECT_EQ(sheet.bends[0].innerRadius, 0.0);
                 EXPECT_NEAR(sheet.bends[0].angle, 90, kExact);
                 EXPECT_NEAR(sheet.bends[0].flangeLength, 30, kExact);
             }},
        Case{"a sheet with a hem",
             [] {
                 const TopoDS_Shape turn =
                     common(cut(bar(0, 0, 3, kY, 3, 40), bar(0, 0, 3, kY, 1, 40)),
                            box(3, 40, 6, {-3, 0, 0}));
                 return fuse(fuse(box(60, 40, 2), box(20, 40, 2, {0, 0, 4})), turn);
             },
             {},
             [](const Part& part) {
                 const SheetMetal& sheet = part.sheetMetal();
                 ASSERT_EQ(sheet.bends.size(), 1U) << sheet.reason;
                 EXPECT_TRUE(sheet.bends[0].closed);
                 EXPECT_NEAR(sheet.bends[0].innerRadius, 1, kExact);
                 EXPECT_NEAR(sheet.bends[0].flangeLength, 23, kExact);
             }},
        Case{"a block twice",
             [] {
                 gp_Trsf by;
                 by.SetTranslation(gp_Vec(100, 0, 0));
                 const TopoDS_Shape block = plate({bar(30, 20, -1, kZ, 6, 22)});
                 return compound({block, block.Moved(by)});
             },
             {{12, 20, 360, 14, 14, kNone}, {12, 20, 360, 14, 14, kNone}},
             [](const Part& part) {
                 EXPECT_EQ(part.holes()[0].solid + part.holes()[1].solid, 3);
                 EXPECT_EQ(part.holePatterns().size(), 0U);
                 EXPECT_FALSE(part.turned().is || part.sheetMetal().is);
                 EXPECT_FALSE(part.turned().reason.empty() || part.sheetMetal().reason.empty());
             }},
        Case{"a ring groove and a void",
             [] {
                 return plate({cut(bar(20, 20, 15, kZ, 12, 10), bar(20, 20, 15, kZ, 9, 10)),
                               bar(45, 20, 5, kZ, 5, 10)});
             },
             {},
             [](const Part& part) {
                 ASSERT_EQ(part.pockets().size(), 1U);
                 EXPECT_NEAR(part.pockets()[0].width, 3, kExact);
                 EXPECT_NEAR(part.pockets()[0].depth, 5, kExact);
             }},
        Case{"around a thin pin",
             [] { return plate({cut(bar(20, 20, 15, kZ, 12, 10), bar(20, 20, 15, kZ, 3, 10))}); },
             {{24, 5, 360, 8}}},
        Case{"in two halves",
             [] {
                 return plate({common(bar(30, 20, -1, kZ, 6, 22), box(60, 20, 22, {0, 0, -1})),
                               common(bar(30, 20, -1, kZ, 6, 22), box(60, 20, 22, {0, 20, -1}))});
             },
             {{12, 20, 360, 14, 14}}},
        Case{"with a counterbore at both ends",
             [] {
                 return plate({bar(30, 20, -1, kZ, 4, 22), bar(30, 20, 14, kZ, 7, 10),
                               bar(30, 20, -1, kZ, 7, 6)});
             },
             {{8, 20, 360, 13, 13}},
             [](const Part& part) {
                 EXPECT_EQ(part.holes()[0].sections.size(), 3U);
                 EXPECT_NEAR(part.holes()[0].boreDepth, 9, kExact);
             }},
        Case{"with a ring inside",
             [] {
                 return plate({bar(30, 20, -1, kZ, 6, 22), bar(30, 20, 8, kZ, 7, 2)});
             },
             {{12, 20, 360, 14, 13}},
             [](const Part& part) { EXPECT_EQ(part.holes()[0].counterboreDiameter, 0.0); }},
        Case{"with counterbores that overlap",
             [] {
                 return plate({bar(24, 20, -1, kZ, 3, 22), bar(24, 20, 15, kZ, 6, 10),
                               bar(34, 20, -1, kZ, 3, 22), bar(34, 20, 15, kZ, 6, 10)});
             },
             {{6, 20}, {6, 20}},
             [](const Part& part) {
                 for (const Hole& hole : part.holes())
                     EXPECT_NEAR(hole.counterboreDiameter, 12, kExact);
             }},
        Case{"in a slot's rounded end",
             [] {
                 return plate({box(20, 10, 22, {20, 15, 12}), bar(20, 20, 12, kZ, 5, 10),
                               bar(40, 20, 12, kZ, 5, 10), bar(20, 20, -1, kZ, 3, 22)});
             },
             {{6, 12, 360, 17}},
             [](const Part& part) { EXPECT_EQ(part.holes()[0].counterboreDiameter, 0.0); }},
        Case{"near to sides, a bottom and each other",
             [] {
                 return plate({bar(8, 20, 6, kZ, 4, 20), bar(28, 18, -1, kZ, 3, 22)});
             },
             {{6, 20, 360, 15, std::sqrt(404.0) - 7, std::sqrt(404.0) - 7},
              {8, 14, 360, 4, 4, std::sqrt(404.0) - 7, kNone}}},
        Case{"below an arm",
             [] {
                 return cut(cut(box(60, 40, 60), box(50, 40, 30, {10, 0, 20})),
                            bar(40, 20, 5, kZ, 4, 15));
             },
             {{8, 15, 360, 16, 5, kNone, 30}}}),
    [](const auto& given) { return "Case" + std::to_string(given.index); });

TEST(Features, EqualHolesMakePatterns) {
    const auto at = [](std::initializer_list<std::pair<double, double>> spots, double middle = 0) {
        TopoDS_Shape shape = box(100, 100, 10);
        for (const auto& [x, y] : spots)
            shape = cut(shape, bar(x, y, -1, kZ, 2, 12));
        return middle > 0 ? cut(shape, bar(50, 50, -1, kZ, middle, 12)) : shape;
    };
    struct Known {
        TopoDS_Shape shape;
        PatternKind kind;
        double pitch, second, circle;
    };
    const double s = 20 * std::sqrt(3.0);
    const std::vector<Known> known{
        {at({{10, 10}, {22, 10}, {34, 10}, {46, 10}}), PatternKind::Row, 12, 0, 0},
        {at({{10, 10}, {90, 10}, {50, 10}, {10, 40}, {50, 40}, {90, 40}}), PatternKind::Grid, 30,
         40, 0},
        {at({{30, 30}, {70, 30}, {70, 70}, {30, 70}}), PatternKind::Grid, 40, 40, 0},
        {at({{30, 30}, {70, 30}, {70, 70}, {30, 70}}, 8), PatternKind::Circle, 40, 0,
         std::sqrt(3200.0)},
        {at({{90, 50}, {70, 50 + s}, {30, 50 + s}, {10, 50}, {30, 50 - s}, {70, 50 - s}}),
         PatternKind::Circle, 40, 0, 80},
        {at({{10, 10}, {30, 10}, {90, 80}, {20, 50}}), PatternKind::Group, 20, 0, 0},
    };
    for (const Known& truth : known) {
        const auto part = partOf(truth.shape, ".brep");
        ASSERT_EQ(part->holePatterns().size(), 1U);
        const HolePattern& pattern = part->holePatterns()[0];
        EXPECT_EQ(pattern.kind, truth.kind);
        EXPECT_NEAR(pattern.pitch, truth.pitch, kExact);
        EXPECT_NEAR(pattern.secondPitch, truth.second, kExact);
        EXPECT_NEAR(pattern.circleDiameter, truth.circle, kExact);
        for (const int hole : pattern.holes)
            EXPECT_EQ(part->holes()[static_cast<std::size_t>(hole - 1)].pattern, 1);
    }
}

TEST(Features, AMeshHasTheHolesOfItsShape) {
    const TopoDS_Shape shape =
        plate({revolved({{20, 20, 20}, {0, 0, -1}}, {{0, 7}, {5, 7}, {5, 4}, {20, 4}}),
               bar(45, 20, 8, kZ, 5, 20)});
    const auto part = partOf(shape, ".stl");
    ASSERT_EQ(part->holes().size(), 2U);
    for (const Hole& hole : part->holes()) {
        const bool first = hole.bottom == HoleBottom::Through;
        EXPECT_NEAR(hole.diameter, first ? 8 : 10, 0.02);
        EXPECT_NEAR(hole.depth, first ? 20 : 12, 0.02);
        EXPECT_NEAR(hole.counterboreDiameter, first ? 14 : 0, 0.02);
        EXPECT_NEAR(hole.edgeDistance, first ? 13 : 10, 0.05);
    }
}

TEST(Features, SharedPartsHaveTheHolesThatTheyAreKnownFor) {
    const std::map<std::string, std::map<int, int>> known{
        // by diameter in micrometres; a counterbore is a section of its hole
        {"11752.stp", {{2159, 89}, {33401, 2}, {69850, 2}}},
        {"ANC101.stp", {{15360, 9}, {26200, 5}, {38750, 1}, {52400, 1}, {77540, 1}}},
        {"as1-oc-214.stp", {{10000, 22}}},
        {"azv_clamp.brep", {{13000, 1}, {35000, 1}}},
        {"face_recognition_sample_part.stp", {}}};
    for (const auto& [name, diameters] : known) {
        SCOPED_TRACE(name);
        const auto file = sharedPart(name.c_str());
        if (!std::filesystem::exists(file)) GTEST_SKIP() << "the part is not here";
        std::map<int, int> found;
        for (const Hole& hole : Part::open(file.string()).part->holes())
            ++found[static_cast<int>(std::lround(hole.diameter * 1000))];
        EXPECT_EQ(found, diameters);
    }
}

TEST(Features, BadNumbersDoNoHarm) {
    const auto part = partOf(drilledBlock(7).shape, ".brep");
    std::mt19937 random(1);
    constexpr double kBad[]{0.0, -7.0, 1e300, std::numeric_limits<double>::quiet_NaN(), 99.0};
    for (int i = 0; i < 400; ++i) {
        corvane::part::Model model = part->model();
        corvane::part::Face& face = model.faces[random() % model.faces.size()];
        corvane::part::Edge& edge = model.edges[random() % model.edges.size()];
        double* numbers[]{&face.surface.radius,
                          &face.surface.halfAngle,
                          &face.surface.axis.x,
                          &face.surface.origin.y,
                          &face.area,
                          &face.turn,
                          &edge.points.front().z,
                          &edge.length,
                          &edge.radius,
                          &edge.points.back().x,
                          &face.normal.y,
                          &edge.centre.x};
        *numbers[random() % std::size(numbers)] = kBad[random() % std::size(kBad)];
        if (i % 5 == 0) edge.faces = {0, 0};
        if (i % 7 == 0) face.loops.clear();
        if (i % 11 == 0) edge.points.clear();
        const auto found = corvane::part::features::findHoles(model, part->mesh());
        EXPECT_LE(found.holes.size(), part->holes().size() + 1);
        corvane::part::features::findCorners(model, found.holes);
        corvane::part::features::findTurned(model);
        corvane::part::features::findSheetMetal(model, found.holes);
        for (const Hole& hole : found.holes)
            EXPECT_TRUE(std::isfinite(hole.diameter + hole.depth) && hole.diameter > 0.0);
    }
    EXPECT_TRUE(corvane::part::features::findHoles({}, {}).holes.empty());
}
