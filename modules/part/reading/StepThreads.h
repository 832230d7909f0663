#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

/// A thread with the instances of the faces that it is on.
struct StepThread {
    Thread thread;
    std::vector<std::uint64_t> faces;
};

/// The threads that a STEP text tells of. A file has no standard place for them that programs keep
/// to, so each text is looked at and followed to faces along the relations of product properties
/// (ISO 10303-41), dimensions (ISO 10303-47), features (ISO 10303-113) and annotations.
std::vector<StepThread> stepThreads(std::string_view text);

}  // namespace corvane::part::reading
