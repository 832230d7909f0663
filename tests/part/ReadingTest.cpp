#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRep_Builder.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <gmock/gmock.h>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "corvane/part/Part.h"

#include "FeatureChecks.h"
#include "Shapes.h"
#include "support/TemporaryFolder.h"

using corvane::part::Convexity;
using corvane::part::Damage;
using corvane::part::Face;
using corvane::part::Part;
using corvane::part::Solid;
using corvane::part::SurfaceKind;
using testing::DoubleNear;
using testing::ElementsAre;

namespace {

class ReadingTest : public testing::Test {
protected:
    std::string write(const TopoDS_Shape& shape, const char* name, const char* unit = "MM") {
        shapes::write(shape, folder_.path(name), unit);
        return folder_.path(name);
    }
    std::string writeText(const std::string& text, const char* name) {
        folder_.write(name, text);
        return folder_.path(name);
    }
    TemporaryFolder folder_;
};

std::vector<double> sizes(const Part& part) {
    const auto& box = part.box();
    return {box.greatest.x - box.least.x, box.greatest.y - box.least.y,
            box.greatest.z - box.least.z};
}

std::map<SurfaceKind, int> kinds(const Part& part) {
    std::map<SurfaceKind, int> counts;
    for (const Face& face : part.model().faces)
        ++counts[face.surface.kind];
    return counts;
}

int edgesOf(const Part& part, Convexity convexity) {
    int count = 0;
    for (const auto& edge : part.model().edges)
        count += edge.convexity == convexity ? 1 : 0;
    return count;
}

/// A block of 60 x 40 x 20 with a step and a hole of 10 through it.
TopoDS_Shape block() {
    const TopoDS_Shape step =
        shapes::cut(shapes::box(60, 40, 20), shapes::box(20, 40, 8, {40, 0, 12}));
    return shapes::cut(step, shapes::cylinder({{20, 20, -1}, {0, 0, 1}}, 5, 22));
}
constexpr double kBlockVolume = 60 * 40 * 20 - 20 * 40 * 8 - 3.14159265358979323846 * 25 * 20;

struct KnownPart {
    const char* file;
    std::size_t solids, faces;
    std::vector<double> sizes;
    double volume, area;
};

class KnownParts : public testing::TestWithParam<KnownPart> {};

}  // namespace

TEST_P(KnownParts, HaveTheFiguresOfAnIndependentProgram) {
    const KnownPart& truth = GetParam();
    const auto file = shapes::sharedPart(truth.file);
    if (!std::filesystem::exists(file)) GTEST_SKIP() << "the part is not here";
    const auto opened = Part::open(file.string());
    ASSERT_TRUE(opened.part) << opened.error;
    const Part& part = *opened.part;
    EXPECT_EQ(part.model().solids.size(), truth.solids);
    EXPECT_EQ(part.model().faces.size(), truth.faces);
    const std::vector<double> found = sizes(part);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(found[i], truth.sizes[i], 1e-3);
    EXPECT_NEAR(part.volume() / truth.volume, 1.0, 1e-6);
    EXPECT_NEAR(part.area() / truth.area, 1.0, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Figures, KnownParts,
    testing::Values(
        KnownPart{"11752.stp", 1, 1018, {1280.160, 144.272, 133.350}, 4608825.49, 2449488.40},
        KnownPart{"ANC101.stp", 1, 87, {426.250, 201.500, 190.545}, 8182330.99, 441024.68},
        KnownPart{"as1-oc-214.stp", 18, 160, {200, 150, 84}, 764520.24, 141079.30},
        KnownPart{"azv_clamp.brep", 1, 18, {155, 145, 80}, 260653.82, 60758.93},
        KnownPart{
            "face_recognition_sample_part.stp", 1, 23, {315, 105, 225}, 3063600.76, 248641.90}));

TEST_F(ReadingTest, EveryFormatGivesTheSamePart) {
    for (const char* name : {"b.step", "b.iges", "b.brep"}) {
        SCOPED_TRACE(name);
        const auto opened = Part::open(write(block(), name));
        ASSERT_TRUE(opened.part) << opened.error;
        const Part& part = *opened.part;
        EXPECT_THAT(sizes(part),
                    ElementsAre(DoubleNear(60, 1e-6), DoubleNear(40, 1e-6), DoubleNear(20, 1e-6)));
        EXPECT_NEAR(part.volume(), kBlockVolume, 1e-6 * kBlockVolume);
        EXPECT_EQ(kinds(part)[SurfaceKind::Plane], 8);
        EXPECT_EQ(kinds(part)[SurfaceKind::Cylinder], 1);
        EXPECT_EQ(edgesOf(part, Convexity::Concave), 1);
        EXPECT_TRUE(part.damages().empty());
    }
}

TEST_F(ReadingTest, FacesThatNearlyMeetAreClosed) {
    // The first face, one of a side, lies off its place.
    const auto openWithGap = [this](const TopoDS_Shape& shape, double gap, const char* name) {
        gp_Trsf away;
        away.SetTranslation({-gap, 0, 0});
        BRep_Builder builder;
        TopoDS_Compound faces;
        builder.MakeCompound(faces);
        for (TopExp_Explorer it(shape, TopAbs_FACE); it.More(); it.Next())
            builder.Add(faces, faces.NbChildren() == 0 ? shapes::transformed(it.Current(), away)
                                                       : it.Current());
        return Part::open(write(faces, name)).part;
    };
    for (const char* name : {"gap.iges", "gap.brep"}) {
        const auto closed = openWithGap(shapes::box(60, 40, 20), 0.005, name);
        ASSERT_TRUE(closed);
        EXPECT_TRUE(closed->damages().empty());
        EXPECT_NEAR(closed->volume(), 48000.0, 5.0);
        EXPECT_THAT(closed->model().notes, ElementsAre(testing::HasSubstr("gaps")));
    }
    const auto open = openWithGap(shapes::box(60, 40, 20), 0.02, "open.brep");
    ASSERT_TRUE(open);
    ASSERT_FALSE(open->damages().empty());
    EXPECT_EQ(open->damages().front().kind, Damage::Kind::OpenEdge);
    EXPECT_TRUE(open->model().notes.empty());
}

TEST_F(ReadingTest, BoxesReachToTheTopsOfSurfacesThatTheKernelSamples) {
    // A narrow bump, swept, turned or offset, that looks out of a block.
    const Handle(TColgp_HArray1OfPnt) points = new TColgp_HArray1OfPnt(1, 7);
    const double bump[7][2]{{0, 5},      {5.1, 5}, {5.17, 5.1}, {5.2, 6},
                            {5.23, 5.1}, {5.3, 5}, {10, 5}};
    for (int i = 0; i < 7; ++i)
        points->SetValue(i + 1, {bump[i][1], 0, bump[i][0]});
    GeomAPI_Interpolate spline(points, false, 1e-9);
    spline.Perform();
    const Handle(Geom_BSplineCurve) curve = spline.Curve();
    const double first = curve->FirstParameter(), last = curve->LastParameter();
    const Handle(Geom_Surface) swept = new Geom_SurfaceOfLinearExtrusion(curve, {0, 1, 0});
    const Handle(Geom_Surface) turned = new Geom_SurfaceOfRevolution(curve, {{0, 0, 0}, {0, 0, 1}});
    const Handle(Geom_Surface) patch =
        new Geom_RectangularTrimmedSurface(swept, first, last, 0.0, 4.0);
    const Handle(Geom_Surface) offset =
        new Geom_OffsetSurface(GeomConvert::SurfaceToBSplineSurface(patch), -0.25);
    const Handle(Geom_Surface) wedge =
        new Geom_RectangularTrimmedSurface(turned, 0.0, 3.0, first, last);
    for (const auto& surface : {patch, wedge, offset}) {
        double u0 = 0, u1 = 0, v0 = 0, v1 = 0, top = 0;
        surface->Bounds(u0, u1, v0, v1);
        for (int i = 0; i <= 20000; ++i) {
            const double share = i / 2e4;
            const double u = surface == wedge ? u0 : u0 + (u1 - u0) * share;
            const double v = surface == wedge ? v0 + (v1 - v0) * share : v0;
            top = std::max(top, surface->Value(u, v).X());
        }
        const TopoDS_Shape block = shapes::box(top + 49.95, 100, 100, {-50, -50, -50});
        const TopoDS_Shape face = BRepBuilderAPI_MakeFace(surface, 1e-6).Shape();
        const auto part = Part::open(write(shapes::compound({block, face}), "b.brep")).part;
        ASSERT_TRUE(part);
        EXPECT_NEAR(part->box().greatest.x, top, 1e-4) << surface->DynamicType()->Name();
    }
}

TEST_F(ReadingTest, MeshesHaveTheFacesOfTheShape) {
    for (const bool binary : {false, true}) {
        SCOPED_TRACE(binary);
        const auto made = shapes::partOf(block(), ".stl", "MM", {.binary = binary});
        ASSERT_TRUE(made);
        const Part& part = *made;
        EXPECT_TRUE(part.model().isMesh);
        EXPECT_NEAR(part.volume(), kBlockVolume, 0.001 * kBlockVolume);
        EXPECT_EQ(kinds(part)[SurfaceKind::Plane], 8);
        ASSERT_EQ(kinds(part)[SurfaceKind::Cylinder], 1);
        for (const Face& face : part.model().faces) {
            if (face.surface.kind != SurfaceKind::Cylinder) continue;
            EXPECT_NEAR(face.surface.radius, 5.0, 1e-4);
            EXPECT_TRUE(face.concave);
            EXPECT_EQ(face.turn, 360.0);
        }
        EXPECT_EQ(edgesOf(part, Convexity::Concave), 1);
        EXPECT_TRUE(part.damages().empty());
    }
}

TEST_F(ReadingTest, UnitsComeFromTheFileAndElseFromTheCaller) {
    EXPECT_NEAR(sizes(*Part::open(write(block(), "i.step", "INCH"), "m").part)[0], 60.0, 1e-6);
    const std::string brep = write(block(), "i.brep");
    EXPECT_NEAR(sizes(*Part::open(brep, "inch").part)[0], 60.0 * 25.4, 1e-4);
    EXPECT_FALSE(Part::open(brep, "parsec").part);
    const auto tiny = Part::open(brep, "um").part;
    ASSERT_EQ(tiny->damages().size(), 1U);
    EXPECT_EQ(tiny->damages()[0].kind, Damage::Kind::Size);
    EXPECT_EQ(tiny->damages()[0].message,
              "the part is 0.06 x 0.04 x 0.02 mm large: is its unit of length right?");
    EXPECT_TRUE(Part::open(brep).part->model().unitsAssumed);
    EXPECT_FALSE(tiny->model().unitsAssumed ||
                 Part::open(folder_.path("i.step")).part->model().unitsAssumed);
}

TEST_F(ReadingTest, MirroredScaledAndTurnedPartsKeepTheirNature) {
    gp_Trsf mirror, scale, turn;
    mirror.SetMirror(gp_Ax2({3, 4, 5}, {1, 2, 3}));
    scale.SetScale({1, 2, 3}, 2.5);
    turn.SetRotation({{0, 0, 0}, {1, 1, 0.3}}, 0.7);
    for (const auto& [trsf, factor] : {std::pair{mirror, 1.0}, {scale, 2.5}, {turn, 1.0}}) {
        const auto opened = Part::open(write(shapes::transformed(block(), trsf), "t.step"));
        ASSERT_TRUE(opened.part) << opened.error;
        const Part& part = *opened.part;
        EXPECT_NEAR(part.volume(), kBlockVolume * factor * factor * factor, 1e-4);
        EXPECT_EQ(edgesOf(part, Convexity::Concave), 1);
        EXPECT_EQ(edgesOf(part, Convexity::Convex), 19);
        const auto& smallest = part.smallestBox();
        EXPECT_NEAR(smallest.sizes[0], 60 * factor, 1e-6);
        EXPECT_NEAR(smallest.sizes[1], 40 * factor, 1e-6);
        EXPECT_NEAR(smallest.sizes[2], 20 * factor, 1e-6);
        std::filesystem::remove(folder_.path("t.step"));
    }
}

TEST_F(ReadingTest, AnOpenShapeIsToldWithItsPlace) {
    std::string text = "solid open\n";
    for (const char* corners : {"0 0 0 1 0 0 0 1 0", "0 0 0 0 0 1 1 0 0", "0 0 0 0 1 0 0 0 1"}) {
        std::istringstream numbers(corners);
        text += "facet normal 0 0 0\nouter loop\n";
        for (std::string x, y, z; numbers >> x >> y >> z;)
            text += "vertex " + x + ' ' + y + ' ' + z + '\n';
        text += "endloop\nendfacet\n";
    }
    const auto part = Part::open(writeText(text + "endsolid\n", "open.stl")).part;
    ASSERT_TRUE(part);
    EXPECT_TRUE(part->model().solids.empty());
    std::map<Damage::Kind, int> kinds;
    for (const Damage& damage : part->damages()) {
        ++kinds[damage.kind];
        EXPECT_FALSE(damage.points.empty());
    }
    EXPECT_EQ(kinds[Damage::Kind::OpenEdge], 3);
    EXPECT_EQ(kinds[Damage::Kind::NotSolid], 1);
}

TEST_F(ReadingTest, SolidsOfACompoundAreTakenApart) {
    const auto part =
        Part::open(
            write(shapes::compound({block(), shapes::box(5, 5, 5, {100, 0, 0})}), "two.step"))
            .part;
    ASSERT_TRUE(part);
    ASSERT_EQ(part->model().solids.size(), 2U);
    EXPECT_NEAR(part->model().solids[1].volume, 125.0, 1e-6);
    EXPECT_NEAR(part->model().solids[1].centre.x, 102.5, 1e-6);
    EXPECT_EQ(part->model().faces.back().solid, 2);
}

TEST_F(ReadingTest, WhatIsNoPartIsRefusedWithAReason) {
    const std::string step = write(block(), "whole.step");
    const std::string whole = TemporaryFolder::readFile(step);
    for (const auto& [text, name] :
         {std::pair<std::string, const char*>{"", "empty.step"},
          {"solid x\nfacet normal 0 0 1\nouter loop\nvertex 0 0 nothing\n", "bad.stl"},
          {"ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A(#1);\nENDSEC;\nEND-ISO-10303-21;\n",
           "self.step"},
          {whole.substr(0, whole.size() / 3), "cut.step"},
          {"DBRep_DrawableShape\n\nCASCADE Topology V1, (c)\nLocations 1\n", "bad.brep"},
          {std::string(84, '\x7f'), "binary.stl"},
          {"hello", "text.txt"}}) {
        const auto opened = Part::open(writeText(text, name));
        EXPECT_FALSE(opened.part) << name;
        EXPECT_FALSE(opened.error.empty()) << name;
    }
    EXPECT_FALSE(Part::open(folder_.path("missing.step")).part);
    EXPECT_FALSE(Part::open(folder_.path()).part);
}

TEST_F(ReadingTest, AFileIsReadOnceUntilItChanges) {
    const std::string file = write(shapes::box(1, 2, 3), "c.brep");
    const auto first = Part::open(file).part;
    EXPECT_EQ(Part::open(file).part, first);
    EXPECT_NE(Part::open(file, "cm").part, first);
    write(shapes::box(10, 20, 30.5), "c.brep");
    EXPECT_NEAR(Part::open(file).part->volume(), 6100.0, 1e-6);
}

TEST_F(ReadingTest, CornersOfFacetsThatDifferInTheLastBitsAreOne) {
    // A tetrahedron whose facets each round its corners for themselves; a true gap stays open.
    constexpr float kUp = 1.0F + 1.2e-7F, kGap = 1.0F + 2e-6F;
    const auto solid = [&](float other) {
        const std::array<std::array<float, 3>, 4> p{
            {{0, 0, 0}, {other, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
        std::ostringstream text;
        text.precision(9);
        text << "solid t\n";
        for (const std::array<std::size_t, 3>& corners :
             {std::array<std::size_t, 3>{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}}) {
            text << "facet normal 0 0 0\nouter loop\n";
            for (const std::size_t corner : corners)
                text << "vertex " << (corner == 1 && corners[0] == 1 ? 1.0F : p[corner][0]) << ' '
                     << p[corner][1] << ' ' << p[corner][2] << (corner == 0 ? "e-40\n" : "\n");
            text << "endloop\nendfacet\n";
        }
        return text.str() + "endsolid\n";
    };
    const auto whole = Part::open(writeText(solid(kUp), "whole.stl")).part;
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->model().solids.size(), 1U);
    EXPECT_EQ(whole->mesh().vertices.size(), 4U);
    EXPECT_NEAR(whole->volume(), 1.0 / 6.0, 1e-6);
    const auto open = Part::open(writeText(solid(kGap), "open.stl")).part;
    ASSERT_TRUE(open);
    EXPECT_EQ(open->mesh().vertices.size(), 5U);
    EXPECT_TRUE(open->model().solids.empty());
}
