#pragma once

#include <TopoDS_Face.hxx>

namespace corvane::part::reading {

/// Whether borders and surface of the face agree: borders are closed, cross neither themselves nor
/// each other, and are inside the outer one.
bool isValid(const TopoDS_Face& face);

}  // namespace corvane::part::reading
