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

    struct Measured {
        Thickness place;  ///< value 0 where there is none
        bool isWall = false;
        Vector normal;               ///< of the other side
        std::uint32_t triangle = 0;  ///< of the other side
    };
    struct Reading {
        Measured ray, sphere;
        /// Beside an edge the sphere tells of the edge; the wall goes on.
        [[nodiscard]] Measured sphereOrBetween() const {
            return sphere.isWall ? sphere : Measured{ray.place, false, ray.normal, ray.triangle};
        }
    };
    [[nodiscard]] Reading measure(const Sample& sample) const;
    [[nodiscard]] Measured measureRay(const Sample& sample) const;

    /// Whether the next of many samples is worth its work.
    [[nodiscard]] bool isDue() { return pace_.isDue(); }

    /// The way along the surface on which the sides draw together most, as long as the sine between
    /// them.
    [[nodiscard]] Vector closing(const Sample& sample, const Vector& opposite) const;
    /// The place of the surface beside a sample, `way` from it.
    [[nodiscard]] Bvh::Hit beside(const Sample& sample, const Vector& way) const;

private:
    struct End {
        Vector point, normal;
        std::uint32_t triangle = 0;
    };
    [[nodiscard]] bool shoot(const Sample& sample, End& end, double& distance) const;
    [[nodiscard]] Measured measured(const Sample& sample, double value, const End& end) const;
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
