#pragma once

#include "corvane/part/Walls.h"

#include "Skin.h"

namespace corvane::part::walls {

Walls findWalls(const Skin& skin);
Gaps findGaps(const Skin& skin);

}  // namespace corvane::part::walls
