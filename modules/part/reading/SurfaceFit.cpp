#include "SurfaceFit.h"

#include <array>
#include <cmath>

#include "../Vec.h"

namespace corvane::part::reading {
namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

Matrix covariance(const std::vector<Sample>& samples, const Vector& mean) {
    Matrix sum{};
    for (const Sample& sample : samples) {
        const Vector d = sample.normal - mean;
        const std::array<double, 3> v{d.x, d.y, d.z};
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                sum[i][j] += v[i] * v[j];
    }
    return sum;
}

/// One Jacobi rotation that makes m[p][q] zero, kept in `vectors` too.
void rotate(Matrix& m, Matrix& vectors, std::size_t p, std::size_t q) {
    if (std::abs(m[p][q]) < 1e-300) return;
    const double theta = (m[q][q] - m[p][p]) / (2.0 * m[p][q]);
    const double t = (theta < 0 ? -1.0 : 1.0) / (std::abs(theta) + std::hypot(theta, 1.0));
    const double c = 1.0 / std::hypot(t, 1.0);
    const double s = t * c;
    for (std::size_t k = 0; k < 3; ++k) {
        const double kp = m[k][p], kq = m[k][q];
        m[k][p] = c * kp - s * kq;
        m[k][q] = s * kp + c * kq;
    }
    for (std::size_t k = 0; k < 3; ++k) {
        const double pk = m[p][k], qk = m[q][k];
        m[p][k] = c * pk - s * qk;
        m[q][k] = s * pk + c * qk;
        const double vp = vectors[k][p], vq = vectors[k][q];
        vectors[k][p] = c * vp - s * vq;
        vectors[k][q] = s * vp + c * vq;
    }
}

/// The unit vector along which the matrix is least.
Vector leastDirection(Matrix m) {
    Matrix vectors{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (int sweep = 0; sweep < 30; ++sweep) {
        rotate(m, vectors, 0, 1);
        rotate(m, vectors, 0, 2);
        rotate(m, vectors, 1, 2);
    }
    std::size_t least = 0;
    for (std::size_t i = 1; i < 3; ++i)
        if (m[i][i] < m[least][least]) least = i;
    return unit({vectors[0][least], vectors[1][least], vectors[2][least]});
}

/// Solves m x = b by Cramer's rule; none where the equations say too little.
std::optional<Vector> solve(const Matrix& m, const Vector& b) {
    const Vector c0{m[0][0], m[1][0], m[2][0]}, c1{m[0][1], m[1][1], m[2][1]},
        c2{m[0][2], m[1][2], m[2][2]};
    const double det = dot(c0, cross(c1, c2));
    const double scale = length(c0) * length(c1) * length(c2);
    if (!(std::abs(det) > 1e-12 * scale) || scale == 0.0) return std::nullopt;
    return Vector{dot(b, cross(c1, c2)) / det, dot(c0, cross(b, c2)) / det,
                  dot(c0, cross(c1, b)) / det};
}

Vector meanPoint(const std::vector<Sample>& samples) {
    Vector sum;
    for (const Sample& sample : samples)
        sum = sum + sample.point;
    return sum * (1.0 / static_cast<double>(samples.size()));
}

Vector meanNormal(const std::vector<Sample>& samples) {
    Vector sum;
    for (const Sample& sample : samples)
        sum = sum + sample.normal;
    return sum * (1.0 / static_cast<double>(samples.size()));
}

/// The least squares point where the lines along the normals meet, seen along `axis` if that is a
/// direction (the centre of a circle), else in space.
std::optional<Vector> meetingPoint(const std::vector<Sample>& samples, const Vector& axis) {
    const Vector mean = meanPoint(samples);
    Matrix m{};
    Vector b;
    for (const Sample& sample : samples) {
        // The projector onto the plane square to the normal.
        const Vector n = unit(sample.normal - axis * dot(sample.normal, axis));
        const std::array<double, 3> v{n.x, n.y, n.z};
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                m[i][j] += (i == j ? 1.0 : 0.0) - v[i] * v[j];
        const Vector p = sample.point - mean;
        b = b + (p - n * dot(p, n));
    }
    const std::array<double, 3> a{axis.x, axis.y, axis.z};
    const double count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            m[i][j] += count * a[i] * a[j];
    b = b - axis * dot(b, axis);
    const std::optional<Vector> point = solve(m, b);
    if (!point) return std::nullopt;
    return *point + mean;
}

std::optional<Surface> fitPlane(const std::vector<Sample>& samples) {
    const Vector normal = unit(meanNormal(samples));
    if (dot(normal, normal) < 0.5) return std::nullopt;
    return Surface{SurfaceKind::Plane, meanPoint(samples), normal};
}

std::optional<Surface> fitCylinder(const std::vector<Sample>& samples) {
    const Vector axis = leastDirection(covariance(samples, {}));
    const std::optional<Vector> centre = meetingPoint(samples, axis);
    if (!centre) return std::nullopt;
    double sum = 0.0;
    for (const Sample& sample : samples)
        sum += distanceToLine(sample.point, *centre, axis);
    return Surface{SurfaceKind::Cylinder, *centre, axis, sum / static_cast<double>(samples.size())};
}

std::optional<Surface> fitSphere(const std::vector<Sample>& samples) {
    const std::optional<Vector> centre = meetingPoint(samples, {});
    if (!centre) return std::nullopt;
    double sum = 0.0;
    for (const Sample& sample : samples)
        sum += distance(sample.point, *centre);
    return Surface{
        SurfaceKind::Sphere, *centre, {0, 0, 1}, sum / static_cast<double>(samples.size())};
}

/// A cone's tangent planes meet in its apex, and its normals make one angle with its axis.
std::optional<Surface> fitCone(const std::vector<Sample>& samples) {
    Vector axis = leastDirection(covariance(samples, meanNormal(samples)));
    Matrix m{};
    Vector b;
    const Vector mean = meanPoint(samples);
    for (const Sample& sample : samples) {
        const Vector& n = sample.normal;
        const std::array<double, 3> v{n.x, n.y, n.z};
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                m[i][j] += v[i] * v[j];
        b = b + n * dot(n, sample.point - mean);
    }
    const std::optional<Vector> offset = solve(m, b);
    if (!offset) return std::nullopt;
    const Vector apex = *offset + mean;
    if (dot(mean - apex, axis) < 0) axis = -axis;
    const double along = dot(mean - apex, axis);
    double slope = 0.0;
    for (const Sample& sample : samples)
        slope +=
            std::atan2(distanceToLine(sample.point, apex, axis), dot(sample.point - apex, axis));
    slope /= static_cast<double>(samples.size());
    if (!(slope > 0.0 && slope < kPi / 2)) return std::nullopt;
    return Surface{SurfaceKind::Cone, apex + axis * along, axis, along * std::tan(slope), 0.0,
                   degrees(slope)};
}

/// The torus around the line whose tube passes the samples best.
std::optional<Surface> fitTube(const std::vector<Sample>& samples, const Vector& origin,
                               const Vector& axis) {
    // A circle is linear in its centre and in what its radius adds to it.
    Matrix m{};
    Vector b;
    for (const Sample& sample : samples) {
        const Vector from = sample.point - origin;
        const double along = dot(from, axis), away = length(from - axis * along);
        const std::array<double, 3> row{2.0 * away, 2.0 * along, 1.0};
        const double square = away * away + along * along;
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t k = 0; k < 3; ++k)
                m[i][k] += row[i] * row[k];
        b = b + Vector{row[0], row[1], row[2]} * square;
    }
    const std::optional<Vector> found = solve(m, b);
    if (!found) return std::nullopt;
    const double square = found->z + found->x * found->x + found->y * found->y;
    if (!(found->x > 0.0 && square > 0.0)) return std::nullopt;
    return Surface{SurfaceKind::Torus, origin + axis * found->y, axis, found->x, std::sqrt(square)};
}

/// A surface of revolution turns in itself: its normals are square to the velocities of a turn
/// around its axis, which is the least turn that they resist. Across the axis a torus is a circle.
std::optional<Surface> fitTorus(const std::vector<Sample>& samples) {
    const Vector mean = meanPoint(samples);
    std::array<Vector, 3> a, b, c;  // rows of the sums of n n, n (p x n) and (p x n) (p x n)
    for (const Sample& sample : samples) {
        const Vector n = sample.normal, m = cross(sample.point - mean, n);
        const std::array<double, 3> left{n.x, n.y, n.z}, right{m.x, m.y, m.z};
        for (std::size_t i = 0; i < 3; ++i) {
            a[i] = a[i] + n * left[i];
            b[i] = b[i] + n * right[i];
            c[i] = c[i] + m * right[i];
        }
    }
    const Matrix shifts{
        {{a[0].x, a[0].y, a[0].z}, {a[1].x, a[1].y, a[1].z}, {a[2].x, a[2].y, a[2].z}}};
    std::array<Vector, 3> shift;  // that goes with a turn around each axis
    Matrix resistance{};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::optional<Vector> found = solve(shifts, -b[i]);
        if (!found) return std::nullopt;
        shift[i] = *found;
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const std::array<double, 3> row{c[i].x, c[i].y, c[i].z};
        for (std::size_t k = 0; k < 3; ++k)
            resistance[i][k] = row[k] + dot(b[i], shift[k]);
    }
    const Vector axis = leastDirection(resistance);
    const Vector moved = shift[0] * axis.x + shift[1] * axis.y + shift[2] * axis.z;
    return fitTube(samples, mean + cross(axis, moved), axis);
}

}  // namespace

std::optional<Surface> guess(SurfaceKind kind, const std::vector<Sample>& samples) {
    switch (kind) {
        case SurfaceKind::Plane:
            return fitPlane(samples);
        case SurfaceKind::Cylinder:
            return fitCylinder(samples);
        case SurfaceKind::Cone:
            return fitCone(samples);
        case SurfaceKind::Sphere:
            return fitSphere(samples);
        case SurfaceKind::Torus:
            return fitTorus(samples);
        case SurfaceKind::Other:
            break;
    }
    return std::nullopt;
}

}  // namespace corvane::part::reading
