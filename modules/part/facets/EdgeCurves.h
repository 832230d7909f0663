#pragma once

#include "corvane/part/Model.h"

namespace corvane::part::facets {

/// Gives the edge, which has its faces, vertices and points, its length and the line or circle that
/// its points are on to within `tolerance`.
void setCurve(const Model& model, double tolerance, Edge& edge);

}  // namespace corvane::part::facets
