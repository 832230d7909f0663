#include <gp_Trsf.hxx>
#include <gtest/gtest.h>

#include "FeatureChecks.h"

using namespace corvane::part;
using namespace shapes;

namespace {

/// The part of a shape after a turn or a mirror, and a direction that went with it.
struct Placed {
    Placed(const TopoDS_Shape& shape, int place, const char* ending = ".brep") {
        if (place == 1) move.SetRotation({{1, 2, 3}, {1, 0.4, -0.7}}, 1.1);
        if (place == 2) move.SetMirror(gp_Ax2({3, 1, -7}, {1, 2, 0.4}));
        part = partOf(transformed(shape, move), ending);
    }
    [[nodiscard]] Vector moved(double x, double y, double z) const {
        const gp_Vec v = gp_Vec(x, y, z).Transformed(move);
        return {v.X(), v.Y(), v.Z()};
    }
    gp_Trsf move;
    std::shared_ptr<const Part> part;
};

TopoDS_Shape upright(double z, double radius, double height) {
    return cylinder({{0, 0, z}, {0, 0, 1}}, radius, height);
}

double leastAngle(const Draft& draft) {
    return draft.faces.empty() ? -1.0 : draft.faces.front().angle;
}

}  // namespace

TEST(DraftTest, AnglesAreThoseOfTheFaces) {
    const double lean = 20 * std::tan(0.05);
    const TopoDS_Shape tapered =
        extruded({{0, 0, 0}, {40, 0, 0}, {40 - lean, 20, 0}, {2 * lean, 20, 0}}, 30);
    const double degree = 3.14159265358979323846 / 180.0;
    const TopoDS_Shape cup =
        cut(cone({{0, 0, 0}, {0, 0, 1}}, 20, 20 - 25 * std::tan(4 * degree), 25),
            cone({{0, 0, -0.0}, {0, 0, 1}}, 17, 17 - 20 * std::tan(1.5 * degree), 20));
    for (const int place : {0, 1, 2}) {
        const Placed a(tapered, place), b(cup, place), c(cup, place, ".stl");
        // The two ends of the prism are upright; the sides lean by 0.05 and about 0.1.
        const Draft draft = a.part->draft(a.moved(0, 3, 0));
        ASSERT_EQ(draft.faces.size(), 6U);
        EXPECT_EQ(draft.faces[0].half, MouldHalf::Either);
        EXPECT_NEAR(draft.faces[2].angle, 0.05 / degree, 1e-6);
        EXPECT_NEAR(draft.faces[3].angle, std::atan(2 * std::tan(0.05)) / degree, 1e-6);
        EXPECT_NEAR(draft.faces[5].angle, 90.0, 1e-6);
        EXPECT_TRUE(draft.undercuts.empty());
        // All sides but the lower one are formed from the side of the pull.
        EXPECT_EQ(draft.partingEdges.size(), 4U);
        EXPECT_NEAR(leastAngle(b.part->draft(b.moved(0, 0, 1))), 1.5, 1e-4);
        EXPECT_NEAR(leastAngle(c.part->draft(c.moved(0, 0, 1))), 1.5, 0.25);
        EXPECT_TRUE(b.part->draft(b.moved(0, 0, 1)).undercuts.empty());
        EXPECT_NEAR(std::abs(product(b.part->pullDirection(), b.moved(0, 0, 1))), 1.0, 1e-9);
    }
}

TEST(DraftTest, UndercutsAreFoundWithTheWayOut) {
    gp_Trsf rising;
    rising.SetRotation({{0, 0, 0}, {1, 0, 0}}, 3.14159265358979323846 / 2);
    const TopoDS_Shape slot = transformed(extruded({{0, 0, 0},
                                                    {60, 0, 0},
                                                    {60, 30, 0},
                                                    {35, 30, 0},
                                                    {35, 18, 0},
                                                    {45, 18, 0},
                                                    {45, 10, 0},
                                                    {15, 10, 0},
                                                    {15, 18, 0},
                                                    {25, 18, 0},
                                                    {25, 30, 0},
                                                    {0, 30, 0}},
                                                   40),
                                          rising);
    const TopoDS_Shape drilled = cut(box(60, 40, 30), cylinder({{30, -1, 15}, {0, 1, 0}}, 4, 12));
    const TopoDS_Shape ring = cut(upright(0, 20, 30), cut(upright(10, 21, 6), upright(9, 17, 8)));
    const TopoDS_Shape cavity = cut(box(20, 20, 20), box(8, 8, 8, {6, 6, 6}));
    for (const int place : {0, 1, 2})
        for (const char* ending : {".brep", ".stl"}) {
            const Placed a(slot, place, ending), b(drilled, place, ending), c(ring, place, ending),
                d(cavity, place, ending);
            SCOPED_TRACE(std::to_string(place) + ending);
            const auto first = a.part->draft(a.moved(0, 0, 1)).undercuts;
            ASSERT_EQ(first.size(), 1U);
            EXPECT_EQ(first[0].faces.size(), 5U);  // floor, two walls, two lips
            EXPECT_NEAR(first[0].area, 2 * (8 + 10 + 10) * 40, 100);
            EXPECT_NEAR(std::abs(product(first[0].slide, a.moved(0, 1, 0))), 1.0, 1e-9);
            EXPECT_NEAR(first[0].travel, 40.0, 0.1);
            EXPECT_NEAR(std::abs(product(a.part->pullDirection(), a.moved(0, 1, 0))), 1.0, 1e-9);
            const auto second = b.part->draft(b.moved(0, 0, 1)).undercuts;
            ASSERT_EQ(second.size(), 1U);
            EXPECT_NEAR(product(second[0].slide, b.moved(0, -1, 0)), 1.0, 1e-4);
            EXPECT_NEAR(second[0].travel, 11.0, 0.1);
            // No one slide frees a groove all around, and nothing a closed cavity.
            for (const auto& undercuts : {c.part->draft(c.moved(0, 0, 1)).undercuts,
                                          d.part->draft(d.moved(0, 0, 1)).undercuts}) {
                ASSERT_EQ(undercuts.size(), 1U);
                EXPECT_EQ(product(undercuts[0].slide, undercuts[0].slide), 0.0);
            }
            EXPECT_TRUE(b.part->draft(b.moved(0, 1, 0)).undercuts.empty());
        }
}

TEST(OverhangsTest, SpansAreMeasuredFromWhatHolds) {
    const TopoDS_Shape bridge = cut(box(50, 20, 20), box(30, 20, 12, {10, 0, 0}));
    const TopoDS_Shape arm = fuse(box(10, 20, 40), box(25, 20, 8, {10, 0, 30}));
    const TopoDS_Shape island = compound({box(5, 5, 5), box(12, 5, 5, {20, 0, 10})});
    const TopoDS_Shape slope = extruded({{0, 0, 0}, {10, 0, 0}, {22, 12, 0}, {0, 12, 0}}, 20);
    struct Case {
        TopoDS_Shape shape;
        Vector up;
        OverhangKind kind;
        double span, area, angle;
    };
    const Case cases[] = {{bridge, {0, 0, 1}, OverhangKind::Bridge, 30, 600, 0},
                          {arm, {0, 0, 1}, OverhangKind::Cantilever, 25, 500, 0},
                          {island, {0, 0, 1}, OverhangKind::Island, 13, 60, 0},
                          {slope, {0, 1, 0}, OverhangKind::Cantilever, 12, 339.41, 45}};
    for (const Case& known : cases)
        for (const int place : {0, 1, 2})
            for (const char* ending : {".brep", ".stl"}) {
                const Placed placed(known.shape, place, ending);
                const Vector up = placed.moved(known.up.x, known.up.y, known.up.z);
                const auto found = placed.part->overhangs(up, 46);
                ASSERT_EQ(found.size(), 1U);
                EXPECT_EQ(found[0].kind, known.kind);
                EXPECT_NEAR(found[0].span, known.span, 0.02 * known.span);
                EXPECT_NEAR(found[0].area, known.area, 0.01);
                EXPECT_NEAR(found[0].angle, known.angle, 1e-3);
                EXPECT_EQ(placed.part->overhangs(up, 45).empty(), known.angle > 0.0);
            }
}

TEST(OverhangsTest, QuestionsWithoutADirectionHaveNoAnswer) {
    const auto cube = partOf(box(5, 5, 5), ".brep");
    EXPECT_TRUE(cube->overhangs({0, 0, 0}, 45).empty());
    EXPECT_TRUE(cube->overhangs({0, 0, 1}, std::nan("")).empty());
    EXPECT_TRUE(cube->draft({0, 0, 0}).faces.empty());
}
