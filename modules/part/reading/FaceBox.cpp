#include "FaceBox.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BndLib_Add3dCurve.hxx>
#include <Bnd_Box.hxx>
#include <gp_Torus.hxx>

#include "Convert.h"

namespace corvane::part::reading {
namespace {

Box plain(Bnd_Box box) {
    if (box.IsVoid()) return {};
    box.SetGap(0.0);
    return {from(box.CornerMin()), from(box.CornerMax())};
}

Box common(const Box& l, const Box& r) {
    return {{std::max(l.least.x, r.least.x), std::max(l.least.y, r.least.y),
             std::max(l.least.z, r.least.z)},
            {std::min(l.greatest.x, r.greatest.x), std::min(l.greatest.y, r.greatest.y),
             std::min(l.greatest.z, r.greatest.z)}};
}

Box widened(const Box& box, double by) {
    const Vector all{by, by, by};
    return {box.least - all, box.greatest + all};
}

/// The box of a disc around an axis, which reaches along it from `low` to `high`.
Box boxAround(const gp_Ax1& line, double radius, double low, double high) {
    const Vector axis = from(line.Direction()), centre = from(line.Location());
    const auto reach = [&](double along) {
        return radius * std::sqrt(std::max(0.0, 1.0 - along * along));
    };
    const Vector half{reach(axis.x), reach(axis.y), reach(axis.z)};
    Box box;
    for (const double along : {low, high}) {
        add(box, centre + axis * along - half);
        add(box, centre + axis * along + half);
    }
    return box;
}

/// The box of the whole torus below a face: that of a patch is a guess of the kernel's, and wide.
Box boxOf(const gp_Torus& torus) {
    const Box box = boxAround(torus.Axis(), torus.MajorRadius(), 0.0, 0.0);
    return widened(box, torus.MinorRadius());
}

/// The box of a curve that its poles tell; empty of others, of which the kernel takes samples.
Box boxOf(const Handle(Adaptor3d_Curve) & curve, double first, double last) {
    Bnd_Box box;
    if (curve->GetType() <= GeomAbs_BSplineCurve)
        BndLib_Add3dCurve::Add(*curve, first, last, 0.0, box);
    return box.IsOpen() ? Box{} : plain(box);
}

template <typename Use>
void eachCorner(const Box& box, Use use) {
    for (const double x : {box.least.x, box.greatest.x})
        for (const double y : {box.least.y, box.greatest.y})
            for (const double z : {box.least.z, box.greatest.z})
                use(Vector{x, y, z});
}

/// The box of all that the curve of a swept surface goes over on its way around or along; empty of
/// another surface.
Box sweptBox(const BRepAdaptor_Surface& surface) {
    Box swept;
    if (surface.GetType() == GeomAbs_SurfaceOfExtrusion) {
        const Box curve =
            boxOf(surface.BasisCurve(), surface.FirstUParameter(), surface.LastUParameter());
        if (isEmpty(curve)) return {};
        const Vector way = from(surface.Direction());
        for (const double along : {surface.FirstVParameter(), surface.LastVParameter()}) {
            add(swept, curve.least + way * along);
            add(swept, curve.greatest + way * along);
        }
    } else if (surface.GetType() == GeomAbs_SurfaceOfRevolution) {
        const Box curve =
            boxOf(surface.BasisCurve(), surface.FirstVParameter(), surface.LastVParameter());
        if (isEmpty(curve)) return {};
        const gp_Ax1 line = surface.AxeOfRevolution();
        const Vector axis = from(line.Direction()), origin = from(line.Location());
        double radius = 0.0, low = 1e300, high = -1e300;
        eachCorner(curve, [&](const Vector& corner) {
            low = std::min(low, dot(corner - origin, axis));
            high = std::max(high, dot(corner - origin, axis));
            radius = std::max(radius, distanceToLine(corner, origin, axis));
        });
        swept = boxAround(line, radius, low, high);
    }
    return swept;
}

}  // namespace

RoughFace roughBox(const TopoDS_Face& face) {
    RoughFace result{face, {}, -1.0};
    Bnd_Box box;
    BRepBndLib::Add(face, box, false);
    if (box.IsVoid()) return result;
    const double gap = box.GetGap();
    result.box = plain(box);
    const BRepAdaptor_Surface surface(face, false);
    if (surface.GetType() == GeomAbs_Torus) result.box = common(result.box, boxOf(surface.Torus()));
    // The gap is the tolerance of the shape; what is within the kernel's own is no size.
    const double margin = gap > kExact ? gap : 0.0;
    result.size = diagonal(widened(result.box, margin));
    // The kernel samples other surfaces, and their box may be too small.
    if (surface.GetType() > GeomAbs_BSplineSurface) {
        result.box = sweptBox(BRepAdaptor_Surface(face, true));
        if (isEmpty(result.box)) result.box = {Box{}.greatest, Box{}.least};
    }
    result.box = widened(result.box, margin);
    return result;
}

Box exactBox(const TopoDS_Face& face) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(face, box, false, false);
    return plain(box);
}

}  // namespace corvane::part::reading
