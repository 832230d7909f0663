#pragma once

#include "corvane/part/Features.h"

namespace corvane::part::features {

Turned findTurned(const Model& model);

}  // namespace corvane::part::features
