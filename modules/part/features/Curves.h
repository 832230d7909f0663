#pragma once

#include <functional>

#include "corvane/part/Model.h"

namespace corvane::part::features {

struct Least {
    double value = 1e300;
    Vector point;
};

/// The point of the edge where `measure` is least. The edge's points are only samples: the search
/// goes on between them along the true curve, which is where the edge's two surfaces meet.
Least least(const Model& model, const Edge& edge,
            const std::function<double(const Vector&)>& measure);

/// From where to where something reaches along a direction.
struct Range {
    double low = 1e300, high = -1e300;
    [[nodiscard]] double length() const { return high - low; }
    [[nodiscard]] double middle() const { return (low + high) / 2; }
    void add(const Range& other);
};

Range rangeAlong(const Model& model, const Edge& edge, const Vector& direction);

}  // namespace corvane::part::features
