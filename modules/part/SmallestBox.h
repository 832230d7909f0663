#pragma once

#include <functional>

#include "corvane/part/Part.h"

#include "reading/Reading.h"

namespace corvane::part {

/// Looks for the box of least volume with `mesh`, and measures the best one with `exact`. No larger
/// than `aligned`, the exact box along the axes.
OrientedBox findSmallestBox(const Model& model, const Mesh& mesh, const Box& aligned,
                            const std::function<Box(const reading::Frame&)>& exact);

}  // namespace corvane::part
