#pragma once

#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part {

/// The axes and the directions of flat faces and cylinders, the largest first, each line once and
/// `most` in all.
std::vector<Vector> directionsOf(const Model& model, std::size_t most);

}  // namespace corvane::part
