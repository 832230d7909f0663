#pragma once

#include <functional>

#include "Skin.h"

namespace corvane::part::walls {

/// Which facets look down too flatly, and which of their borders are held from below.
class Facing {
public:
    /// Facets at the lowest height rest on the plate and do not overhang.
    Facing(const Skin& skin, const Vector& up, double limit);

    struct PartOfFace {
        double area = 0.0;
        double flattest = 90.0;
    };
    [[nodiscard]] const PartOfFace& of(int face) const {
        return faces_[static_cast<std::size_t>(face)];
    }
    [[nodiscard]] bool hangs(int face) const { return of(face).area > 0.0; }
    [[nodiscard]] bool overhangs(std::uint32_t triangle) const { return overhangs_[triangle]; }

    /// Each border of an overhanging facet whose other side goes down from it.
    void eachHeldBorder(
        const std::function<void(std::uint32_t, const Vector&, const Vector&)>& use) const;

private:
    [[nodiscard]] double height(const Vector& p) const { return dot(p, up_); }
    [[nodiscard]] bool holds(std::uint32_t triangle, double border) const;

    const Skin& skin_;
    Vector up_;
    double same_, lowest_ = 1e300;
    std::vector<bool> overhangs_;
    std::vector<PartOfFace> faces_;
};

}  // namespace corvane::part::walls
