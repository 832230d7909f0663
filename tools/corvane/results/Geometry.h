#pragma once

#include <cstdint>
#include <span>

#include "Result.h"

namespace results {

/// The form in which a part's surface travels to viewers.
///
/// `positions` holds x, y and z of each corner in millimetres, `indices` three corners a triangle,
/// counter-clockwise as seen from outside, `faces` the face of each triangle, from 1, or nothing.
Geometry encodeGeometry(std::span<const float> positions, std::span<const std::uint32_t> indices,
                        std::span<const std::uint32_t> faces);

}  // namespace results
