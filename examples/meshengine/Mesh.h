#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace meshengine {

struct Vector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    double operator[](std::size_t axis) const { return axis == 0 ? x : axis == 1 ? y : z; }
    friend bool operator==(const Vector&, const Vector&) = default;
};

inline Vector operator+(const Vector& a, const Vector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector operator-(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector operator*(const Vector& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
inline double dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double length(const Vector& vector);

/// Three vertex numbers, counter-clockwise seen from outside.
using Triangle = std::array<std::uint32_t, 3>;

/// A triangle mesh. No two vertices are equal, so that neighbours share vertex numbers.
struct Mesh {
    std::vector<Vector> vertices;
    std::vector<Triangle> triangles;

    const Vector& corner(std::size_t triangle, std::size_t index) const {
        return vertices[triangles[triangle][index]];
    }
    Vector centre(std::size_t triangle) const;
    /// Twice the area long, pointing outward.
    Vector normal(std::size_t triangle) const;
};

/// Makes a mesh of loose triangles, three corners each, by giving equal corners one vertex. The
/// corners are finite and their number fits 32 bits.
Mesh weld(std::span<const Vector> corners);

}  // namespace meshengine
