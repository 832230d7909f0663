#pragma once

#include <cmath>
#include <gp_Trsf.hxx>
#include <memory>
#include <string>

#include "corvane/part/Part.h"

#include "Shapes.h"
#include "support/TemporaryFolder.h"

/// What tests of parts share.
namespace shapes {

/// Sizes of exact shapes are found this well, in millimetres and degrees.
inline constexpr double kExact = 1e-6;

/// The part that a file of that kind gives for the shape.
inline std::shared_ptr<const corvane::part::Part> partOf(const TopoDS_Shape& shape,
                                                         const char* ending = ".step",
                                                         const char* unit = "MM",
                                                         const Meshing& meshing = {}) {
    const TemporaryFolder folder;
    const std::string file = folder.path(std::string("part") + ending);
    write(shape, file, unit, meshing);
    return corvane::part::Part::open(file).part;
}

/// Another place for each seed, mirrored for a third of them.
inline gp_Trsf placement(unsigned seed) {
    gp_Trsf by, turn;
    if (seed % 3 == 1) by.SetMirror(gp_Ax2({3, 4, 5}, {1, 2, 3}));
    if (seed % 2 == 1) turn.SetRotation({{1, 2, 3}, {1, 1, 0.3}}, 0.1 * seed);
    return turn * by;
}

inline corvane::part::Vector moved(const corvane::part::Vector& point, const gp_Trsf& by) {
    gp_XYZ xyz(point.x, point.y, point.z);
    by.Transforms(xyz);
    return {xyz.X(), xyz.Y(), xyz.Z()};
}

inline corvane::part::Vector turned(const corvane::part::Vector& direction, const gp_Trsf& by) {
    gp_XYZ xyz(direction.x, direction.y, direction.z);
    xyz.Multiply(by.HVectorialPart());
    const double sign = by.ScaleFactor() < 0.0 ? -1.0 : 1.0;
    return {sign * xyz.X(), sign * xyz.Y(), sign * xyz.Z()};
}

inline double apart(const corvane::part::Vector& a, const corvane::part::Vector& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

inline double product(const corvane::part::Vector& a, const corvane::part::Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

}  // namespace shapes
