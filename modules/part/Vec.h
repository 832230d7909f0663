#pragma once

#include <algorithm>
#include <cmath>

#include "corvane/part/Model.h"

/// Arithmetic of vectors and boxes.
namespace corvane::part {

constexpr double kPi = 3.14159265358979323846;
constexpr double degrees(double radians) {
    return radians * 180.0 / kPi;
}
constexpr double radians(double angle) {
    return angle * kPi / 180.0;
}

constexpr Vector operator+(const Vector& a, const Vector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vector operator-(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vector operator-(const Vector& a) {
    return {-a.x, -a.y, -a.z};
}
constexpr Vector operator*(const Vector& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
constexpr double dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr Vector cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vector& a) {
    return std::sqrt(dot(a, a));
}
inline double distance(const Vector& a, const Vector& b) {
    return length(a - b);
}
/// The unit vector of `a`; zero stays zero.
inline Vector unit(const Vector& a) {
    const double size = length(a);
    return size > 0.0 ? a * (1.0 / size) : a;
}
/// Degrees between two directions, 0 to 180, exact for small angles too.
inline double angleBetween(const Vector& a, const Vector& b) {
    return degrees(std::atan2(length(cross(a, b)), dot(a, b)));
}
/// Degrees between two lines, 0 to 90.
inline double angleBetweenLines(const Vector& a, const Vector& b) {
    const double angle = angleBetween(a, b);
    return std::min(angle, 180.0 - angle);
}
/// A unit vector square to the unit vector `a`.
inline Vector squareTo(const Vector& a) {
    return unit(std::abs(a.x) < 0.6 ? cross(a, {1, 0, 0}) : cross(a, {0, 1, 0}));
}
/// The point of the line through `origin` along the unit vector `axis` that is nearest to `point`.
inline Vector ontoLine(const Vector& point, const Vector& origin, const Vector& axis) {
    return origin + axis * dot(point - origin, axis);
}
inline double distanceToLine(const Vector& point, const Vector& origin, const Vector& axis) {
    return distance(point, ontoLine(point, origin, axis));
}

inline void add(Box& box, const Vector& p) {
    box.least = {std::min(box.least.x, p.x), std::min(box.least.y, p.y),
                 std::min(box.least.z, p.z)};
    box.greatest = {std::max(box.greatest.x, p.x), std::max(box.greatest.y, p.y),
                    std::max(box.greatest.z, p.z)};
}
inline bool isEmpty(const Box& box) {
    return box.least.x > box.greatest.x;
}
inline double diagonal(const Box& box) {
    return isEmpty(box) ? 0.0 : distance(box.least, box.greatest);
}

}  // namespace corvane::part
