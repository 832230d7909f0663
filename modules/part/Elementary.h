#pragma once

#include "corvane/part/Model.h"

namespace corvane::part {

/// Where a point is beside an elementary surface.
struct Offset {
    double distance = 0.0;  ///< millimetres, positive on the side of `outward`
    Vector outward;         ///< the unit normal at the foot of the point, away from axis or centre
    bool isKnown = false;   ///< false for Other, and on an axis or in a centre, where no way is out
};

Offset offsetFrom(const Surface& surface, const Vector& point);

}  // namespace corvane::part
