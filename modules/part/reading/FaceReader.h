#pragma once

#include <TopoDS_Face.hxx>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

/// Surface, side, area and a point of a face; number, solid and loops are the caller's.
Face readFace(const TopoDS_Face& face);

/// The unit normal out of the material at surface parameters; zero where the surface has none.
Vector normalAt(const TopoDS_Face& face, double u, double v);

}  // namespace corvane::part::reading
