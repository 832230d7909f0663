#include "ArcSections.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepLProp_SLProps.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <Standard_Failure.hxx>
#include <algorithm>
#include <cmath>

#include "../Vec.h"
#include "Convert.h"

namespace corvane::part::reading {
namespace {

/// Programs write a rounding as a spline that keeps its radius to some parts in a thousand, and a
/// section of one whose radius changes is a little slanted.
constexpr double kSpread = 0.1;
constexpr double kAlike = 0.01;  // radii of sections that count as one
/// Cosine of the angle between a section and the direction in which the surface bends most.
constexpr double kAcross = 0.94;
constexpr int kSections = 9, kPoints = 7, kSteps = 48;
/// Sections keep off the ends, where a surface may have no normal.
constexpr double kOff = 1e-3;
constexpr double kLeastTurn = 5.0, kMostTurn = 179.0;  // degrees

double at(double first, double last, double share) {
    return first + (last - first) * std::clamp(share, kOff, 1.0 - kOff);
}

/// Looks at sections along one parameter.
class Looker {
public:
    Looker(const TopoDS_Face& face, bool alongU)
        : surface_(face, false), properties_(surface_, 2, 1e-9), alongU_(alongU) {
        BRepTools::UVBounds(face, bounds_[0], bounds_[1], bounds_[2], bounds_[3]);
        reversed_ = face.Orientation() == TopAbs_REVERSED;
    }

    [[nodiscard]] double first() const { return bounds_[alongU_ ? 0 : 2]; }
    [[nodiscard]] double last() const { return bounds_[alongU_ ? 1 : 3]; }

    /// Whether every section is an arc, by the greater or the smaller one of the curvatures.
    bool areArcs(bool greater, Rounding& rounding) {
        double least = 1e300, greatest = 0.0, sign = 0.0;
        for (int i = 0; i < kSections; ++i) {
            const double curvature = curvatureOf(i / (kSections - 1.0), greater);
            if (!(std::abs(curvature) > 1e-9) || curvature * sign < 0.0) return false;
            sign = curvature;
            least = std::min(least, 1.0 / std::abs(curvature));
            greatest = std::max(greatest, 1.0 / std::abs(curvature));
        }
        if (greatest - least <= kAlike * greatest) least = greatest = (least + greatest) / 2;
        rounding.least = least;
        rounding.greatest = greatest;
        // A surface bends towards its parametric normal where its curvature is positive.
        rounding.concave = (sign > 0.0) != reversed_;
        rounding.length = length();
        return true;
    }

private:
    void go(double along, double across) {
        const double u = at(bounds_[0], bounds_[1], alongU_ ? across : along),
                     v = at(bounds_[2], bounds_[3], alongU_ ? along : across);
        properties_.SetParameters(u, v);
    }

    /// Of the section; 0 if it is no arc.
    double curvatureOf(double along, bool greater) {
        double low = 1e300, high = -1e300;
        Vector firstNormal, lastNormal;
        for (int i = 0; i < kPoints; ++i) {
            go(along, i / (kPoints - 1.0));
            if (!properties_.IsCurvatureDefined()) return 0.0;
            lastNormal = from(properties_.Normal());
            if (i == 0) firstNormal = lastNormal;
            const double curvature =
                greater ? properties_.MaxCurvature() : properties_.MinCurvature();
            low = std::min(low, curvature);
            high = std::max(high, curvature);
            if (!properties_.IsUmbilic() && !bendsAlong(greater)) return 0.0;
        }
        const double turn = angleBetween(firstNormal, lastNormal);
        const double middle = (low + high) / 2;
        const bool arc =
            turn >= kLeastTurn && turn <= kMostTurn && high - low <= kSpread * std::abs(middle);
        return arc ? middle : 0.0;
    }

    bool bendsAlong(bool greater) {
        const bool defined =
            alongU_ ? properties_.IsTangentUDefined() : properties_.IsTangentVDefined();
        if (!defined) return false;
        gp_Dir tangent, most, least;
        if (alongU_)
            properties_.TangentU(tangent);
        else
            properties_.TangentV(tangent);
        properties_.CurvatureDirections(most, least);
        return std::abs(tangent.Dot(greater ? most : least)) >= kAcross;
    }

    double length() {
        double sum = 0.0;
        Vector before;
        for (int i = 0; i <= kSteps; ++i) {
            go(static_cast<double>(i) / kSteps, 0.5);
            const Vector point = from(properties_.Value());
            if (i > 0) sum += distance(before, point);
            before = point;
        }
        return sum;
    }

    BRepAdaptor_Surface surface_;
    BRepLProp_SLProps properties_;
    bool alongU_, reversed_ = false;
    std::array<double, 4> bounds_{};
};

}  // namespace

std::optional<ArcSections> ArcSections::of(const TopoDS_Face& face) try {
    ArcSections sections;
    sections.face_ = face;
    for (const bool alongU : {true, false}) {
        Looker looker(face, alongU);
        sections.alongU_ = alongU;
        sections.first_ = looker.first();
        sections.last_ = looker.last();
        for (const bool greater : {true, false})
            if (looker.areArcs(greater, sections.rounding_)) return sections;
    }
    return std::nullopt;
} catch (const Standard_Failure&) {
    // A part can be read without the curvature of one face.
    return std::nullopt;
}

int ArcSections::sideOf(const TopoDS_Edge& edge) const {
    constexpr double kBeside = 0.1;
    double first = 0.0, last = 0.0;
    const Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, face_, first, last);
    if (curve.IsNull()) return -1;
    const gp_Pnt2d middle = curve->Value((first + last) / 2);
    const double share = ((alongU_ ? middle.X() : middle.Y()) - first_) / (last_ - first_);
    return share < kBeside ? 0 : share > 1.0 - kBeside ? 1 : -1;
}

}  // namespace corvane::part::reading
