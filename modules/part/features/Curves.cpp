#include "Curves.h"

#include <cmath>

#include "../Elementary.h"
#include "../Vec.h"

namespace corvane::part::features {
namespace {

/// The point near `start` on both surfaces, by Newton's steps; `start` itself where the surfaces
/// are tangent or one of them is unknown.
Vector ontoBoth(const Surface& a, const Surface& b, const Vector& start) {
    constexpr int kSteps = 8;
    Vector p = start;
    for (int i = 0; i < kSteps; ++i) {
        const auto [fa, na, knowsA] = offsetFrom(a, p);
        const auto [fb, nb, knowsB] = offsetFrom(b, p);
        const double c = dot(na, nb), det = 1.0 - c * c;
        if (!knowsA || !knowsB || !(det > 1e-6)) return start;
        const Vector step = na * ((fa - c * fb) / det) + nb * ((fb - c * fa) / det);
        p = p - step;
        if (!(dot(step, step) > 1e-26 * (1.0 + dot(p, p)))) break;
    }
    return p;
}

/// The true curve between the samples of an edge; `at` counts samples.
class Curve {
public:
    Curve(const Model& model, const Edge& edge)
        : edge_(edge),
          segments_(static_cast<double>(edge.points.size()) - 1.0),
          closed_(edge.vertices[0] == edge.vertices[1] && edge.kind != CurveKind::Line) {
        const bool two = edge.faces[0] > 0 && edge.faces[1] > 0 && edge.faces[0] != edge.faces[1];
        if (two && !model.isMesh) {
            a_ = &model.face(edge.faces[0]).surface;
            b_ = &model.face(edge.faces[1]).surface;
        }
    }

    [[nodiscard]] Vector at(double where) const {
        if (closed_) where -= segments_ * std::floor(where / segments_);
        where = std::clamp(where, 0.0, segments_);
        const double low = std::min(std::floor(where), segments_ - 1.0);
        const auto index = static_cast<std::size_t>(low);
        const Vector &from = edge_.points[index], &to = edge_.points[index + 1];
        const Vector p = from + (to - from) * (where - low);
        if (edge_.kind == CurveKind::Line || a_ == nullptr) return p;
        if (edge_.kind == CurveKind::Circle) {
            const Vector out = p - edge_.centre;
            return edge_.centre + unit(out - edge_.axis * dot(out, edge_.axis)) * edge_.radius;
        }
        const Vector exact = ontoBoth(*a_, *b_, p);
        return distance(exact, p) <= distance(from, to) ? exact : p;
    }
    [[nodiscard]] double lowest(double around) const {
        return closed_ ? around : std::max(0.0, around);
    }
    [[nodiscard]] double highest(double around) const {
        return closed_ ? around : std::min(segments_, around);
    }

private:
    const Edge& edge_;
    double segments_;
    bool closed_;
    const Surface *a_ = nullptr, *b_ = nullptr;
};

}  // namespace

Least least(const Model& model, const Edge& edge,
            const std::function<double(const Vector&)>& measure) {
    Least best;
    double most = -1e300;
    std::size_t where = 0;
    for (std::size_t i = 0; i < edge.points.size(); ++i) {
        const double value = measure(edge.points[i]);
        most = std::max(most, value);
        if (value < best.value) {
            best = {value, edge.points[i]};
            where = i;
        }
    }
    // Nothing to gain along a curve that keeps its distance.
    if (edge.points.size() < 2 || (edge.points.size() > 2 && most - best.value < 1e-10))
        return best;
    const Curve curve(model, edge);
    double low = curve.lowest(static_cast<double>(where) - 1.0);
    double high = curve.highest(static_cast<double>(where) + 1.0);
    constexpr double kGolden = 0.61803398874989485;
    constexpr int kSteps = 42;  // to some 1e-9 of a step, where a flat minimum is exact
    for (int i = 0; i < kSteps; ++i) {
        const double a = high - (high - low) * kGolden, b = low + (high - low) * kGolden;
        if (measure(curve.at(a)) <= measure(curve.at(b)))
            high = b;
        else
            low = a;
    }
    const Vector point = curve.at((low + high) / 2);
    const double value = measure(point);
    return value < best.value ? Least{value, point} : best;
}

void Range::add(const Range& other) {
    low = std::min(low, other.low);
    high = std::max(high, other.high);
}

Range rangeAlong(const Model& model, const Edge& edge, const Vector& direction) {
    Range range;
    if (edge.points.empty()) return range;
    if (edge.kind == CurveKind::Line) {
        const double a = dot(edge.points.front(), direction),
                     b = dot(edge.points.back(), direction);
        return {std::min(a, b), std::max(a, b)};
    }
    if (edge.kind == CurveKind::Circle && angleBetweenLines(edge.axis, direction) < 1e-6) {
        const double level = dot(edge.centre, direction);
        return {level, level};
    }
    range.low = least(model, edge, [&](const Vector& p) { return dot(p, direction); }).value;
    range.high = -least(model, edge, [&](const Vector& p) { return -dot(p, direction); }).value;
    return range;
}

}  // namespace corvane::part::features
