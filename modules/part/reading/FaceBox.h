#pragma once

#include <TopoDS_Face.hxx>

#include "../Vec.h"

namespace corvane::part::reading {

/// Millimetres by which a box may be too small: twice what the kernel takes for one point.
constexpr double kExact = 2e-7;

/// A face with a box that is quick to find and at least as large as its own.
struct RoughFace {
    TopoDS_Face shape;
    Box box;
    double size = -1.0;  // of the box; below 0 of a face without one
};

RoughFace roughBox(const TopoDS_Face& face);

/// The least box, after a search for the extremes of the face; empty if it has none.
Box exactBox(const TopoDS_Face& face);

}  // namespace corvane::part::reading
