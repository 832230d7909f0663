#pragma once

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <optional>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

/// A freeform face whose sections across are arcs, by the curvature of its surface.
class ArcSections {
public:
    /// None if the face has no such sections, or the kernel cannot measure it.
    static std::optional<ArcSections> of(const TopoDS_Face& face);

    /// Radii and length; the face's number and sides are the caller's.
    [[nodiscard]] const Rounding& rounding() const { return rounding_; }

    /// Which ends of the arcs an edge of the face lies along, 0 or 1; -1 if it lies across.
    [[nodiscard]] int sideOf(const TopoDS_Edge& edge) const;

private:
    TopoDS_Face face_;
    bool alongU_ = false;
    double first_ = 0.0, last_ = 0.0;  // parameters across
    Rounding rounding_;
};

}  // namespace corvane::part::reading
