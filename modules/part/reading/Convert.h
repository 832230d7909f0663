#pragma once

#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

inline Vector from(const gp_XYZ& v) {
    return {v.X(), v.Y(), v.Z()};
}
inline Vector from(const gp_Pnt& p) {
    return from(p.XYZ());
}
inline Vector from(const gp_Dir& d) {
    return from(d.XYZ());
}
inline gp_Dir toDir(const Vector& v) {
    return {v.x, v.y, v.z};
}

}  // namespace corvane::part::reading
