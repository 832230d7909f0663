// Roundings whose surfaces are freeform: they are known by their curvature alone.

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Elips.hxx>
#include <gtest/gtest.h>

#include "FeatureChecks.h"

using corvane::part::Fillet;
using corvane::part::SurfaceKind;
using shapes::box;
using shapes::cylinder;

namespace {

/// A shape, the number of its edge to round, and the radii at the ends of the edge.
struct Sharp {
    TopoDS_Shape shape;
    int edge = 0;
    double first = 0.0, last = 0.0;
    int halves = 1;

    [[nodiscard]] TopoDS_Edge which() const {
        TopTools_IndexedMapOfShape edges;
        TopExp::MapShapes(shape, TopAbs_EDGE, edges);
        return TopoDS::Edge(edges(edge));
    }
    [[nodiscard]] TopoDS_Shape rounded() const {
        if (edge == 0) return shape;
        BRepFilletAPI_MakeFillet fillet(shape);
        fillet.Add(first, last, which());
        return fillet.Shape();
    }
    /// Of the edge, near which the rounding runs; the kernel rounds both halves of a seam.
    [[nodiscard]] double length() const {
        GProp_GProps properties;
        BRepGProp::LinearProperties(which(), properties);
        return properties.Mass() * halves;
    }
};

TopoDS_Shape tee() {
    return shapes::fuse(cylinder({{0, 0, 0}, {0, 0, 1}}, 20, 60),
                        cylinder({{0, 0, 30}, {1, 0, 0}}, 10, 50));
}

/// A bar whose upper edge is a quarter of an ellipse, tangent to top and side.
TopoDS_Shape elliptic() {
    const gp_Elips ellipse(gp_Ax2({34, 17, 0}, {0, 0, 1}, {1, 0, 0}), 6, 3);
    const auto line = [](double x0, double y0, double x1, double y1) {
        return BRepBuilderAPI_MakeEdge(gp_Pnt(x0, y0, 0), gp_Pnt(x1, y1, 0)).Edge();
    };
    BRepBuilderAPI_MakeWire wire(line(0, 0, 40, 0), line(40, 0, 40, 17),
                                 BRepBuilderAPI_MakeEdge(ellipse, 0, std::acos(0.0)).Edge());
    wire.Add(line(34, 20, 0, 20));
    wire.Add(line(0, 20, 0, 0));
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(wire.Wire()).Shape(), gp_Vec(0, 0, 50))
        .Shape();
}

struct Case {
    const char* name;
    Sharp (*make)();
    std::size_t count;  // of fillets
    bool concave;
};
std::ostream& operator<<(std::ostream& out, const Case& given) {
    return out << given.name;
}

class FreeformFillets : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(FreeformFillets, AreFoundByTheirCurvature) {
    const Case& truth = GetParam();
    const Sharp sharp = truth.make();
    for (const auto& [ending, scale] :
         {std::pair{".step", 1.0}, {".brep", 0.04}, {".brep", 25.0}, {".iges", 1.0}}) {
        SCOPED_TRACE(testing::Message() << ending << ' ' << scale);
        gp_Trsf by, grow;
        by.SetMirror(gp_Ax2({3, 4, 5}, {1, 2, 3}));
        grow.SetScale({0, 0, 0}, scale);
        const auto part = shapes::partOf(shapes::transformed(sharp.rounded(), by * grow), ending);
        ASSERT_TRUE(part);
        ASSERT_EQ(part->fillets().size(), truth.count);
        for (const Fillet& fillet : part->fillets()) {
            EXPECT_NEAR(fillet.radius / scale / sharp.first, 1.0, 0.01);
            EXPECT_NEAR(fillet.largestRadius / scale / sharp.last, 1.0, 0.01);
            EXPECT_EQ(fillet.radius == fillet.largestRadius, sharp.first == sharp.last);
            EXPECT_EQ(fillet.concave, truth.concave);
            EXPECT_NEAR(fillet.length / scale / sharp.length(), 1.0, 0.2);
            for (const int face : fillet.faces)
                EXPECT_EQ(part->model().face(face).surface.kind, SurfaceKind::Other);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, FreeformFillets,
    testing::Values(Case{"a radius that grows",
                         [] {
                             return Sharp{box(60, 40, 20), 1, 2, 5};
                         },
                         1, false},
                    Case{"the seam of two cylinders",
                         [] {
                             return Sharp{tee(), 2, 2, 2, 2};
                         },
                         1, true},
                    Case{"the end of a slanted groove",
                         [] {
                             return Sharp{shapes::cut(box(60, 40, 20),
                                                      cylinder({{-5, 20, 25}, {1, 0, 0.2}}, 9, 80)),
                                          2, 1.5, 1.5};
                         },
                         1, false},
                    Case{"an elliptic edge", [] { return Sharp{elliptic()}; }, 0, false}));
