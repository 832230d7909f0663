#pragma once

#include "corvane/part/Walls.h"

#include "Pace.h"
#include "Samples.h"

namespace corvane::part::walls {

/// What to measure: the material, or the air around it.
enum class Medium { Material, Air };

/// Measures how far it is to the other side of the material, or of the air.
class Probe {
public:
    Probe(const Skin& skin, Medium medium);

    struct Reading {
        Thickness ray, sphere;  ///< value 0 where there is none
        bool rayIsWall = false, sphereIsWall = false;
    };
    [[nodiscard]] Reading measure(const Sample& sample) const;

    /// Whether the next of many samples is worth its work.
    [[nodiscard]] bool isDue() { return pace_.isDue(); }

    /// The facet on the sample's side across from a reading's other end, and the place on it.
    [[nodiscard]] Bvh::Hit across(const Sample& sample, const Vector& opposite) const;

private:
    struct End {
        Vector point, normal;
        std::uint32_t triangle = 0;
    };
    [[nodiscard]] bool shoot(const Sample& sample, End& end, double& distance) const;
    [[nodiscard]] double inscribe(const Sample& sample, double most, End& end) const;
    [[nodiscard]] double shrink(const Sample& sample, double radius, End& end) const;
    [[nodiscard]] bool touches(const Sample& sample, double radius, const End& end) const;
    [[nodiscard]] bool isWall(int face, int opposite, double cosine) const;
    [[nodiscard]] int bodyOf(std::uint32_t triangle) const;

    const Skin& skin_;
    Medium medium_;
    std::vector<std::pair<int, int>> edges_;  // pairs of faces at a sharp edge, in order
    double tiny_ = 0.0;
    mutable Pace pace_;
    mutable double last_ = 0.0;  // radius of the sphere before
};

}  // namespace corvane::part::walls
