#include "FaceReader.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp.hxx>
#include <BRepTools.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <GProp_GProps.hxx>
#include <Precision.hxx>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>
#include <gp_Sphere.hxx>
#include <gp_Torus.hxx>
#include <optional>

#include "../Vec.h"
#include "Convert.h"
#include "Recognise.h"

namespace corvane::part::reading {
namespace {

constexpr double kRecognitionTolerance = 1e-4;  // mm
constexpr double kRecognitionSlack = 0.1;       // degrees

struct Range {
    double u0 = 0, u1 = 0, v0 = 0, v1 = 0;
};

Range rangeOf(const TopoDS_Face& face) {
    Range range;
    BRepTools::UVBounds(face, range.u0, range.u1, range.v0, range.v1);
    for (double* bound : {&range.u0, &range.u1, &range.v0, &range.v1})
        *bound = std::clamp(*bound, -1e6, 1e6);
    return range;
}

Vector normalOf(const BRepAdaptor_Surface& surface, double u, double v, bool reversed) {
    gp_Pnt point;
    gp_Vec du, dv;
    surface.D1(u, v, point, du, dv);
    const gp_Vec normal = du.Crossed(dv);
    if (!(normal.SquareMagnitude() > 1e-30)) return {};
    const Vector out = from(gp_Dir(normal));
    return reversed ? -out : out;
}

Surface elementary(const BRepAdaptor_Surface& adaptor) {
    Surface s;
    switch (adaptor.GetType()) {
        case GeomAbs_Plane:
            s = {SurfaceKind::Plane, from(adaptor.Plane().Location()),
                 from(adaptor.Plane().Axis().Direction())};
            break;
        case GeomAbs_Cylinder: {
            const gp_Cylinder c = adaptor.Cylinder();
            s = {SurfaceKind::Cylinder, from(c.Location()), from(c.Axis().Direction()), c.Radius()};
            break;
        }
        case GeomAbs_Cone: {
            const gp_Cone c = adaptor.Cone();
            const double sign = c.SemiAngle() < 0 ? -1.0 : 1.0;
            s = {SurfaceKind::Cone,
                 from(c.Location()),
                 from(c.Axis().Direction()) * sign,
                 c.RefRadius(),
                 0.0,
                 degrees(std::abs(c.SemiAngle()))};
            break;
        }
        case GeomAbs_Sphere: {
            const gp_Sphere c = adaptor.Sphere();
            s = {SurfaceKind::Sphere, from(c.Location()), from(c.Position().Direction()),
                 c.Radius()};
            break;
        }
        case GeomAbs_Torus: {
            const gp_Torus c = adaptor.Torus();
            s = {SurfaceKind::Torus, from(c.Location()), from(c.Axis().Direction()),
                 c.MajorRadius(), c.MinorRadius()};
            break;
        }
        default:
            break;
    }
    return s;
}

std::vector<Sample> samplesOf(const BRepAdaptor_Surface& adaptor, const Range& range,
                              bool reversed) {
    constexpr int kSteps = 7;
    std::vector<Sample> samples;
    for (int i = 0; i <= kSteps; ++i) {
        for (int j = 0; j <= kSteps; ++j) {
            const double u = range.u0 + (range.u1 - range.u0) * i / kSteps;
            const double v = range.v0 + (range.v1 - range.v0) * j / kSteps;
            const Sample sample{from(adaptor.Value(u, v)), normalOf(adaptor, u, v, reversed)};
            if (dot(sample.normal, sample.normal) > 0.5) samples.push_back(sample);
        }
    }
    return samples;
}

/// Parameters of a point inside the borders: the middle, else the first of ever finer grids.
gp_Pnt2d inside(const TopoDS_Face& face, const Range& range) {
    BRepTopAdaptor_FClass2d classifier(face, Precision::PConfusion());
    for (int steps = 2; steps <= 32; steps *= 2) {
        for (int i = 1; i < steps; ++i) {
            for (int j = 1; j < steps; ++j) {
                const gp_Pnt2d uv(range.u0 + (range.u1 - range.u0) * i / steps,
                                  range.v0 + (range.v1 - range.v0) * j / steps);
                if (classifier.Perform(uv, false) == TopAbs_IN) return uv;
            }
        }
    }
    return {(range.u0 + range.u1) / 2, (range.v0 + range.v1) / 2};
}

double turnOf(const BRepAdaptor_Surface& adaptor, const Surface& surface, const Range& range) {
    const bool goesRound = surface.kind != SurfaceKind::Plane && surface.kind != SurfaceKind::Other;
    if (!goesRound) return 0.0;
    const auto type = adaptor.GetType();
    if (type == GeomAbs_Cylinder || type == GeomAbs_Cone || type == GeomAbs_Sphere ||
        type == GeomAbs_Torus)
        return std::min(360.0, degrees(range.u1 - range.u0));
    // A recognised surface has parameters of its own: the angle is added up along the middle lines.
    double best = 0.0;
    for (const bool alongU : {true, false}) {
        double sum = 0.0;
        Vector last;
        for (int i = 0; i <= 24; ++i) {
            const double t = i / 24.0;
            const double u = range.u0 + (range.u1 - range.u0) * (alongU ? t : 0.5);
            const double v = range.v0 + (range.v1 - range.v0) * (alongU ? 0.5 : t);
            const Vector p = from(adaptor.Value(u, v));
            const Vector out = unit(p - ontoLine(p, surface.origin, surface.axis));
            if (i > 0) sum += angleBetween(last, out);
            last = out;
        }
        best = std::max(best, sum);
    }
    return std::min(360.0, best);
}

}  // namespace

Vector normalAt(const TopoDS_Face& face, double u, double v) {
    return normalOf(BRepAdaptor_Surface(face, false), u, v, face.Orientation() == TopAbs_REVERSED);
}

Face readFace(const TopoDS_Face& shape) {
    Face face;
    const bool reversed = shape.Orientation() == TopAbs_REVERSED;
    const BRepAdaptor_Surface adaptor(shape, false);
    const Range range = rangeOf(shape);
    face.surface = elementary(adaptor);
    if (face.surface.kind == SurfaceKind::Other && adaptor.GetType() != GeomAbs_OtherSurface) {
        if (const auto found = recognise(samplesOf(adaptor, range, reversed), kRecognitionTolerance,
                                         kRecognitionSlack))
            face.surface = *found;
    }
    const gp_Pnt2d uv = inside(shape, range);
    face.point = from(adaptor.Value(uv.X(), uv.Y()));
    face.normal = normalOf(adaptor, uv.X(), uv.Y(), reversed);
    if (face.surface.kind == SurfaceKind::Plane) face.surface.axis = face.normal;
    face.concave = isConcave(face.surface, {face.point, face.normal});
    face.turn = turnOf(adaptor, face.surface, range);
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(shape, properties);
    face.area = std::abs(properties.Mass());
    return face;
}

}  // namespace corvane::part::reading
