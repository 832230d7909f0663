#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GeomConvert.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_OffsetSurface.hxx>
#include <IGESControl_Writer.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <gmock/gmock.h>
#include <gp_Elips.hxx>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <regex>

#include "corvane/part/Part.h"

#include "../../modules/part/Vec.h"
#include "Shapes.h"
#include "support/TemporaryFolder.h"

using corvane::part::Part;
using testing::HasSubstr;

namespace {

/// A freeform face, rational where it is `weighted`, on which another one is offset.
TopoDS_Shape freeform(bool weighted) {
    TColgp_Array2OfPnt poles(1, 3, 1, 3);
    TColStd_Array2OfReal weights(1, 3, 1, 3);
    weights.Init(1.0);
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j)
            poles(i, j) = {4.0 * i, 4.0 * j, i == 2 && j == 2 ? 3.0 : 0.0};
    if (weighted) weights(2, 2) = 2.0;
    const Handle(Geom_Surface) bezier = new Geom_BezierSurface(poles, weights);
    const Handle(Geom_Surface) spline = GeomConvert::SurfaceToBSplineSurface(bezier);
    const Handle(Geom_Surface) offset = new Geom_OffsetSurface(spline, 0.5);
    return shapes::compound({BRepBuilderAPI_MakeFace(bezier, 0.1, 0.9, 0.1, 0.9, 1e-6).Shape(),
                             BRepBuilderAPI_MakeFace(offset, 0.1, 0.9, 0.1, 0.9, 1e-6).Shape()});
}

/// Cylinders, one of them placed twice.
TopoDS_Shape placed() {
    gp_Trsf move, turn;
    move.SetTranslation({20, 0, 0});
    turn.SetRotation({{0, 0, 0}, {0, 0, 1}}, 1);
    const TopLoc_Location a(move), b(turn);
    const TopoDS_Shape cylinder = shapes::cylinder({{5, 5, 0}, {0, 0, 1}}, 3, 10);
    return shapes::compound(
        {cylinder, cylinder.Moved(a * b), cylinder.Moved(a * a * b.Inverted())});
}

class DamagedFilesTest : public testing::Test {
protected:
    std::string write(const TopoDS_Shape& shape, const std::string& name) {
        shapes::write(shape, folder_.path(name));
        return TemporaryFolder::readFile(folder_.path(name));
    }
    corvane::part::OpenResult open(const std::string& text, const std::string& name) {
        folder_.write(name, text);
        return Part::open(folder_.path(name));
    }
    TemporaryFolder folder_;
};

/// The text with its first `old` after `start` replaced, so that a test fails that finds none.
std::string replaced(std::string text, std::string_view start, std::string_view old,
                     std::string_view by) {
    const std::size_t at = text.find(old, text.find(start));
    EXPECT_NE(at, text.npos) << start << ' ' << old;
    if (at != text.npos) text.replace(at, old.size(), by);
    return text;
}

/// What the shape lacks, by its damages.
std::string missing(const Part& part) {
    std::string all;
    for (const auto& damage : part.damages())
        if (damage.kind == corvane::part::Damage::Kind::Missing) all += damage.message;
    return all;
}

}  // namespace

TEST_F(DamagedFilesTest, BrepFilesOfEveryFormAreRead) {
    const std::string path = folder_.path("form.brep");
    for (const TopoDS_Shape& shape : {freeform(false), freeform(true), placed(),
                                      shapes::cone({{0, 0, 0}, {0, 0, 1}}, 5, 2, 8)}) {
        BRepMesh_IncrementalMesh(shape, 1.0, false, 1.0);
        const std::string step = write(shape, "same.step");
        const auto same = Part::open(folder_.path("same.step")).part;
        ASSERT_TRUE(same);
        for (const auto version :
             {TopTools_FormatVersion_VERSION_1, TopTools_FormatVersion_VERSION_2,
              TopTools_FormatVersion_VERSION_3}) {
            for (const bool mesh : {false, true}) {
                SCOPED_TRACE(testing::Message() << "version " << version << ", mesh " << mesh);
                BRepTools::Write(shape, path.c_str(), mesh, mesh, version);
                const auto opened = Part::open(path);
                ASSERT_TRUE(opened.part) << opened.error;
                EXPECT_EQ(opened.part->model().faces.size(), same->model().faces.size());
                EXPECT_NEAR(opened.part->area(), same->area(), 1e-4);
                std::filesystem::remove(path);
            }
        }
    }
}

TEST_F(DamagedFilesTest, ABrepFileMustCountWhatItHolds) {
    const std::string whole = write(freeform(true), "whole.brep");
    for (const auto& [start, old, by] :
         {std::array<const char*, 3>{"Curve2ds", "Curve2ds 8", "Curve2ds 2000000000"},
          {"Curves ", "Curves 8", "Curves -1"},
          {"Surfaces", "9 1 1 0 0 2 2 3 3 2 2", "9 1 1 0 0 2 2 30000 30000 2 2"},
          {"Surfaces", "9 1 1 0 0 2 2 3 3 2 2", "9 1 1 0 0 2 2 1 1 2 2"},
          {"Surfaces", "9 1 1 0 0 2 2 3 3 2 2 4 4 0", "9 1 1 0 0 2 2 3 3 2 2 4 1e300 0"},
          {"TShapes", "1  1 0", "1  x 0"},
          {"TShapes", "\n0 0\n", "\n0 y\n"},
          {"\nCo\n", "+", "+9"},
          {"TShapes", "0101101\n*", "0101101\n+1 0 *"}}) {
        SCOPED_TRACE(by);
        const auto opened = open(replaced(whole, start, old, by), "bad.brep");
        EXPECT_FALSE(opened.part);
        EXPECT_THAT(opened.error, HasSubstr("damaged at line"));
    }
}

TEST_F(DamagedFilesTest, ACurveThatASurfaceStandsOnMustBeOneThatCanBe) {
    const gp_Elips ellipse(gp_Ax2({0, 0, 0}, {0, 0, 1}), 5, 3);
    const TopoDS_Shape edge = BRepBuilderAPI_MakeEdge(ellipse, 0, 2).Shape();
    const std::string whole = write(BRepPrimAPI_MakePrism(edge, gp_Vec(0, 0, 4)).Shape(), "e.brep");
    const auto opened = open(replaced(whole, "Surfaces", " 5 3", " 3 5"), "bad.brep");
    EXPECT_THAT(opened.error, HasSubstr("damaged at line"));
}

TEST_F(DamagedFilesTest, AnEntityOfAShapeMustHaveItsPartsAndBeNoneOfThem) {
    const std::string step = write(shapes::box(1, 2, 3), "whole.step");
    const auto entity = [&](const std::string& kind) {
        const std::size_t end = step.find(" = " + kind + "("), start = step.rfind('#', end);
        return step.substr(start, end - start);
    };
    const std::string loop = entity("EDGE_LOOP"), edge = entity("ORIENTED_EDGE"),
                      plane = entity("PLANE");
    const std::string inLoop = loop + " = EDGE_LOOP('',(" + edge;
    const std::string inEdge = edge + " = ORIENTED_EDGE('',*,*,";
    const std::size_t basis = step.find(inEdge) + inEdge.size();
    const std::string edgeCurve = step.substr(basis, step.find(',', basis) - basis);
    for (const auto& [text, reason] :
         {std::pair{replaced(step, inLoop, edge, plane), "is damaged"},
          {replaced(step, inEdge, edgeCurve, "$"), "is damaged"},
          {replaced(step, inEdge, edgeCurve, edge), "refers to itself"},
          {replaced(step, "CARTESIAN_POINT", "(0.,0.,0.)", "(0.,1.E300,0.)"), "too far away"}}) {
        const auto opened = open(text, "bad.step");
        EXPECT_FALSE(opened.part);
        EXPECT_THAT(opened.error, HasSubstr(reason));
    }
    const std::string iges = write(shapes::box(1, 2, 3), "whole.iges");
    for (const auto& text :
         {replaced(iges, "D0000001", "D0000001", "D000001"),
          replaced(iges, "P0000001", "P0000001", "P0000x01"), iges.substr(0, 81 * 20)}) {
        const auto opened = open(text, "bad.iges");
        EXPECT_FALSE(opened.part);
        EXPECT_THAT(opened.error, HasSubstr("IGES file is"));
    }
}

TEST_F(DamagedFilesTest, AnEntityOfAnUnknownKindHarmsAFileOnlyWhereTheShapeNeedsIt) {
    const std::string step = write(shapes::box(1, 2, 3), "whole.step");
    const std::string feature =
        "#9001=(CHARACTERIZED_OBJECT('a','b')FEATURE_DEFINITION()POCKET());"
        "#9002=PRODUCT_DEFINITION_SHAPE('','',#9001);#9003=SHAPE_ASPECT('','',#9002,.T.);"
        "#9004=SHAPE_DEFINITION_REPRESENTATION(#9002,#9005);#9005=PLANAR_SHAPE('',(#11),#345);";
    const auto with = [&](const std::string& entities, const std::string& old = "DATA;",
                          const std::string& by = "DATA;") {
        return replaced(replaced(step, "", old, by), "DATA;", "ENDSEC", entities + "ENDSEC");
    };
    const std::string odd = "#9001=STRANGE('');";
    const struct {
        std::string text, note, damage, error;
    } cases[]{
        {with(feature), "2 entities of unknown kinds are left out: CHARACTERIZED_OBJECT", "", ""},
        {with(odd), "an entity of an unknown kind is left out: STRANGE", "", ""},
        {with(odd + "#9002=SHAPE_REPRESENTATION('',(#9001),#345);"), "STRANGE", "", ""},
        {with(odd + "#9002=SHAPE_REPRESENTATION('',(#9001),#345);"
                    "#9003=SHAPE_REPRESENTATION_RELATIONSHIP('','',#10,#9002);"),
         "STRANGE", "#9001 (STRANGE)", ""},
        {with(odd, "(#11,#15)", "(#9001,#11,#9001,#15)"), "STRANGE", "#9001 (STRANGE)", ""},
        {with(odd + "#9002=SHAPE_DEFINITION_REPRESENTATION(#4,#9001);"), "STRANGE",
         "#9001 (STRANGE)", ""},
        {with("#9002=PRODUCT_DEFINITION_SHAPE('','',$);"), "", "", "#9002 is damaged"},
        {with(odd + "#9002=PRODUCT_DEFINITION('',$,#9001,$);"), "", "", "#9002 is damaged"},
        {with(odd, "'',(#18),#32,", "'',(#18),#9001,"), "", "", "unknown kind, #9001 (STRANGE)"},
        {with(odd + "#9002=PRODUCT_DEFINITION_SHAPE('','',#9001);"
                    "#9003=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#9004,#9002);"
                    "#9004=SHAPE_REPRESENTATION_RELATIONSHIP('','',#10,#10);"),
         "", "", "#9002 has a part of an unknown kind"}};
    for (const auto& [text, note, damage, error] : cases) {
        SCOPED_TRACE(note + damage + error);
        const auto opened = open(text, "unknown.step");
        EXPECT_THAT(opened.error, HasSubstr(error));
        ASSERT_EQ(opened.part == nullptr, !error.empty()) << opened.error;
        if (!opened.part) continue;
        const auto& model = opened.part->model();
        EXPECT_EQ(model.faces.size(), 6U);
        EXPECT_THAT(model.notes, testing::ElementsAre(HasSubstr(note)));
        std::string damages;
        for (const auto& found : opened.part->damages())
            damages += found.message;
        EXPECT_EQ(damages.empty(), damage.empty());
        EXPECT_THAT(damages, HasSubstr(damage));
    }
}

TEST_F(DamagedFilesTest, ASurfaceMustBeNearAndACurveOnItDrawn) {
    const std::string step = write(shapes::cylinder({{0, 0, 0}, {0, 0, 1}}, 5, 10), "pin.step");
    EXPECT_THAT(open(replaced(step, "CYLINDRICAL_SURFACE", ",5.)", ",1.E400)"), "far.step").error,
                HasSubstr("is too far away"));
    const std::string drawing = "DEFINITIONAL_REPRESENTATION('',(";
    const std::size_t start = step.find(drawing) + drawing.size();
    const std::string curve = step.substr(start, step.find(')', start) - start);
    for (const char* none : {"", "$", "#12"}) {
        const auto opened = open(replaced(step, drawing, curve, none), "bad.step");
        EXPECT_FALSE(opened.part);
        EXPECT_THAT(opened.error,
                    testing::AnyOf(HasSubstr("has no curve"), HasSubstr("is damaged")));
    }
}

TEST_F(DamagedFilesTest, AShapeThatHoldsTheOneBeforeTwiceIsRefused) {
    TopoDS_Shape doubled = BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 0, 0)).Shape();
    gp_Trsf move;
    move.SetTranslation({1, 0, 0});
    for (int i = 0; i < 60; ++i)
        doubled = shapes::compound({doubled, doubled.Moved(TopLoc_Location(move))});
    write(doubled, "doubled.brep");
    EXPECT_THAT(Part::open(folder_.path("doubled.brep")).error, HasSubstr("too many"));
    TopoDS_Shape boxes = shapes::box(1, 1, 1);
    for (int i = 0; i < 16; ++i)
        boxes = shapes::compound({boxes, boxes.Moved(TopLoc_Location(move))});
    write(boxes, "boxes.brep");
    EXPECT_THAT(Part::open(folder_.path("boxes.brep")).error, HasSubstr("250,000 faces"));
    std::string chain;
    int shape = 10;
    for (int next = 1000; next < 1120; next += 4) {
        const auto at = [&](int step) { return '#' + std::to_string(next + step); };
        chain += at(0) + "=REPRESENTATION_MAP(#11,#" + std::to_string(shape) + ");";
        chain += at(1) + "=MAPPED_ITEM(''," + at(0) + ",#11);";
        chain += at(2) + "=MAPPED_ITEM(''," + at(0) + ",#11);";
        chain += at(3) + "=SHAPE_REPRESENTATION('',(" + at(1) + ',' + at(2) + "),#345);";
        shape = next + 3;
    }
    const std::string step = write(shapes::box(1, 2, 3), "box.step");
    EXPECT_THAT(open(replaced(step, "DATA;", "ENDSEC", chain + "ENDSEC"), "chain.step").error,
                HasSubstr("places too many"));
}

TEST_F(DamagedFilesTest, BordersThatTheKernelWouldRepairForHoursAreRefused) {
    const std::string step = write(shapes::box(1, 2, 3), "whole.step");
    const auto repeated = [&](const std::string& list) {
        const std::size_t start = step.find(list) + list.size();
        const std::string first = step.substr(start, step.find_first_of(",)", start) - start);
        std::string text = step;
        for (int i = 0; i < 8000; ++i)
            text.insert(start, first + ',');
        return text;
    };
    EXPECT_THAT(open(repeated("EDGE_LOOP('',("), "e.step").error, HasSubstr("too many edges"));
    EXPECT_THAT(open(repeated("ADVANCED_FACE('',("), "f.step").error,
                HasSubstr("too many borders"));
}

TEST_F(DamagedFilesTest, APartWithoutFacesHasNoBody) {
    const TopoDS_Shape edge = BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 0, 0)).Shape();
    for (const char* name : {"edge.step", "edge.brep", "edge.iges"}) {
        write(edge, name);
        EXPECT_EQ(Part::open(folder_.path(name)).error, "the file holds no body") << name;
    }
}

TEST_F(DamagedFilesTest, FacetsThatABrepFileBringsAreNotTrusted) {
    const TopoDS_Shape pin = shapes::cylinder({{0, 0, 0}, {0, 0, 1}}, 5, 10);
    BRepMesh_IncrementalMesh(pin, 2.0, false, 2.0);
    for (TopExp_Explorer it(pin, TopAbs_FACE); it.More(); it.Next()) {
        TopLoc_Location place;
        const auto facets = BRep_Tool::Triangulation(TopoDS::Face(it.Current()), place);
        facets->Deflection(1e-9);
        for (TopExp_Explorer edge(it.Current(), TopAbs_EDGE); edge.More(); edge.Next())
            BRep_Tool::PolygonOnTriangulation(TopoDS::Edge(edge.Current()), facets, place)
                ->Deflection(1e-9);
    }
    BRepTools::Write(pin, folder_.path("pin.brep").c_str());
    const auto part = Part::open(folder_.path("pin.brep")).part;
    ASSERT_TRUE(part);
    double area = 0.0;
    for (const auto& [a, b, c] : part->mesh().triangles) {
        const auto& v = part->mesh().vertices;
        area += length(cross(v[b] - v[a], v[c] - v[a])) / 2;
    }
    EXPECT_NEAR(area / part->area(), 1.0, 0.01);
}

TEST_F(DamagedFilesTest, AFaceOfFacetsAloneIsRefused) {
    TopoDS_Face face;
    const Handle(Poly_Triangulation) facets = new Poly_Triangulation(3, 1, false);
    facets->SetTriangle(1, {1, 2, 3});
    for (int i = 1; i <= 3; ++i)
        facets->SetNode(i, gp_Pnt(i, i * i, 0));
    BRep_Builder().MakeFace(face, facets);
    write(face, "facets.brep");
    EXPECT_THAT(Part::open(folder_.path("facets.brep")).error, HasSubstr("no surface"));
}

TEST_F(DamagedFilesTest, ACutFileIsRefused) {
    const TopoDS_Shape pin = shapes::cylinder({{0, 0, 0}, {0, 0, 1}}, 5, 10);
    for (const char* kind : {"step", "iges", "brep", "stl"}) {
        const std::string name = std::string("cut.") + kind;
        const std::string whole = write(pin, name);
        for (std::size_t percent = 2; percent < 98; percent += 4) {
            const auto opened = open(whole.substr(0, whole.size() * percent / 100), name);
            // Without its last facets a text of them is whole, and the surface has a hole.
            const bool isOpen = opened.part && !opened.part->damages().empty();
            EXPECT_TRUE(isOpen || !opened.error.empty()) << kind << ' ' << percent;
        }
    }
}

TEST_F(DamagedFilesTest, AnAssemblyThatContainsItselfIsRefused) {
    gp_Trsf move;
    move.SetTranslation({20, 0, 0});
    const TopoDS_Shape pair = shapes::compound({shapes::box(1, 2, 3), shapes::box(3, 2, 1)});
    shapes::writeAssembly({pair, pair.Moved(TopLoc_Location(move))}, folder_.path("whole.step"));
    const std::string step = TemporaryFolder::readFile(folder_.path("whole.step"));
    const std::regex uses(
        "NEXT_ASSEMBLY_USAGE_OCCURRENCE\\('[^']*','[^']*','[^']*',(#\\d+),(#\\d+)");
    std::vector<std::smatch> all{std::sregex_iterator(step.begin(), step.end(), uses), {}};
    ASSERT_GE(all.size(), 3U);
    const std::string root = all.front()[1];
    for (const std::smatch& use : all)
        for (const std::string& part : {use[1].str(), root}) {
            std::string text = step;
            text.replace(static_cast<std::size_t>(use.position(2)), use[2].str().size(), part);
            const auto opened = open(text, "bad.step");
            EXPECT_THAT(opened.error, HasSubstr("part of itself")) << use.str() << ' ' << part;
        }
}

TEST_F(DamagedFilesTest, WhatIsNotReadOfAnIgesFileIsTold) {
    const TopoDS_Shape plate =
        shapes::cut(shapes::box(40, 30, 20), shapes::cylinder({{20, 15, -1}, {0, 0, 1}}, 5, 30));
    const std::string faces = write(plate, "plate.iges");
    IGESControl_Writer writer("MM", 1);
    writer.AddShape(plate);
    ASSERT_TRUE(writer.Write(folder_.path("solid.iges").c_str()));
    const std::string solid = TemporaryFolder::readFile(folder_.path("solid.iges"));
    /// Entities of one type become such as nobody knows.
    const auto unknown = [](const std::string& text, const std::string& type) {
        const std::regex inDirectory("(^|\\n)     " + type + "(?=.{64}D)"),
            parameters("(^|\\n)" + type + "(?=,.{68}P)");
        return std::regex_replace(std::regex_replace(text, inDirectory, "$1     599"), parameters,
                                  "$01599");
    };
    const struct {
        std::string text, note, damage, error;
        std::size_t faces;
    } cases[]{{unknown(solid, "402"), "unknown kind is left out: 599", "", "", 7},
              {unknown(faces, "402"), "unknown kind is left out: 599", "", "", 7},
              {unknown(solid, "192"), "599", "the type 510, 1 in all", "", 6},
              {unknown(faces, "120"), "599", "the type 144, 1 in all", "", 6},
              {unknown(faces, "102"), "599", "the type 599, 8 in all", "", 3},
              {unknown(solid, "514"), "", "", "a part of an unknown kind", 0},
              {unknown(solid, "100"), "", "", "a part of an unknown kind", 0},
              {unknown(faces, "124"), "", "", "a part of an unknown kind", 0},
              {unknown(faces, "144"), "", "", "holds no body; 7 entities of unknown", 0}};
    for (const auto& [text, note, damage, error, count] : cases) {
        SCOPED_TRACE(note + damage + error);
        const auto opened = open(text, "unknown.iges");
        EXPECT_THAT(opened.error, HasSubstr(error));
        ASSERT_EQ(opened.part == nullptr, !error.empty()) << opened.error;
        if (!opened.part) continue;
        EXPECT_EQ(opened.part->model().faces.size(), count);
        EXPECT_THAT(opened.part->model().notes, testing::Contains(HasSubstr(note)));
        EXPECT_EQ(missing(*opened.part).empty(), damage.empty());
        EXPECT_THAT(missing(*opened.part), HasSubstr(damage));
    }
}

TEST_F(DamagedFilesTest, FacetsThatAreLeftOutAreTold) {
    const std::string box = write(shapes::box(10, 10, 10), "box.stl");
    const auto with = [&](const std::string& corners) {
        return replaced(box, "", "endsolid", "facet\nouter loop\n" + corners + "endsolid");
    };
    const std::string here = "vertex 1 1 1\n";
    const struct {
        std::string corners, note, damage, error;
    } cases[]{{"", "", "", ""},
              {here + here + "vertex 1 2 3\n", "lines or points are left out, 1 in all", "", ""},
              {here + "vertex 1 1 1.0000001\nvertex 1 2 3\n", "left out, 1 in all", "", ""},
              {here + here + "vertex nan 2 3\n", "", "no numbers, 1 in all", ""},
              {here + here + "vertex 1 1e39 3\n", "", "no numbers, 1 in all", ""},
              {here + here, "", "", "is cut short"},
              {here + here + "facet\n", "", "", "fewer than three corners"}};
    for (const auto& [corners, note, damage, error] : cases) {
        SCOPED_TRACE(corners);
        const auto opened = open(with(corners), "odd.stl");
        EXPECT_THAT(opened.error, HasSubstr(error));
        ASSERT_EQ(opened.part == nullptr, !error.empty()) << opened.error;
        if (!opened.part) continue;
        EXPECT_EQ(opened.part->model().solids.size(), 1U);
        std::string notes;
        for (const std::string& each : opened.part->model().notes)
            notes += each;
        EXPECT_EQ(notes.empty(), note.empty());
        EXPECT_THAT(notes, HasSubstr(note));
        EXPECT_EQ(missing(*opened.part).empty(), damage.empty());
        EXPECT_THAT(missing(*opened.part), HasSubstr(damage));
    }
}

TEST_F(DamagedFilesTest, AnEdgeGoesAroundOnceAtMost) {
    const std::string pin = write(shapes::cylinder({{0, 0, 0}, {0, 0, 1}}, 5, 10), "pin.brep");
    // On its curve, and on the cylinder.
    for (const char* range : {"1  1 0 0 6.28318530717959", "2  1 1 0 0 6.28318530717959"}) {
        std::string longer = range;
        longer.replace(longer.rfind(' '), std::string::npos, " 1e6");
        EXPECT_THAT(open(replaced(pin, "TShapes", range, longer), "e.brep").error,
                    HasSubstr("damaged at line"));
    }
}

TEST_F(DamagedFilesTest, APartIsMeshedWhateverItsSizeAndPlace) {
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2({1, 2, 3}, {0, 0, 1}));
    const TopoDS_Shape small = shapes::rounded(shapes::box(4, 3, 2), 0.5);
    for (const double size : {1.0, 1e7}) {
        gp_Trsf larger;
        larger.SetScale({0, 0, 0}, size);
        const TopoDS_Shape part = shapes::transformed(small, larger);
        write(shapes::compound({part, part.Moved(TopLoc_Location(mirror), false)}), "two.brep");
        const auto opened = Part::open(folder_.path("two.brep"));
        ASSERT_TRUE(opened.part);
        const auto& [vertices, triangles, faces] = opened.part->mesh();
        double volume = 0.0;
        for (const auto& [a, b, c] : triangles)
            volume += dot(vertices[a], cross(vertices[b], vertices[c])) / 6;
        EXPECT_NEAR(volume / opened.part->volume(), 1.0, 0.01) << size;
        std::filesystem::remove(folder_.path("two.brep"));
    }
}
