#include "Facing.h"

#include "Sides.h"

namespace corvane::part::walls {
namespace {

/// Heights that differ by less than this part of the part's size are equal.
constexpr double kSameHeight = 1e-4;
/// Degrees; a face at the limit itself needs no support.
constexpr double kSameAngle = 1e-3;

}  // namespace

Facing::Facing(const Skin& skin, const Vector& up, double limit)
    : skin_(skin), up_(up), same_(kSameHeight * skin.size()) {
    const Mesh& mesh = skin.mesh();
    for (std::uint32_t t = 0; t < mesh.triangles.size(); ++t)
        for (std::size_t i = 0; i < 3 && skin.usable(t); ++i)
            lowest_ = std::min(lowest_, height(skin.corner(t, i)));
    overhangs_.assign(mesh.triangles.size(), false);
    faces_.assign(skin.model().faces.size() + 1, {});
    for (std::uint32_t t = 0; t < mesh.triangles.size(); ++t) {
        if (!skin.usable(t) || !skin.isClosed(t)) continue;
        const double angle = angleBetween(skin.facetNormal(t), -up);
        if (angle >= limit - kSameAngle) continue;
        double top = lowest_;
        for (std::size_t i = 0; i < 3; ++i)
            top = std::max(top, height(skin.corner(t, i)));
        if (top < lowest_ + same_) continue;
        overhangs_[t] = true;
        PartOfFace& face = faces_[static_cast<std::size_t>(mesh.faces[t])];
        face.area += skin.area(t);
        face.flattest = std::min(face.flattest, angle);
    }
}

/// What goes down from a border holds it, and so does what lies on the plate.
bool Facing::holds(std::uint32_t triangle, double border) const {
    double top = -1e300, sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        top = std::max(top, height(skin_.corner(triangle, i)));
        sum += height(skin_.corner(triangle, i));
    }
    return sum / 3.0 < border - same_ || top < lowest_ + same_;
}

void Facing::eachHeldBorder(
    const std::function<void(std::uint32_t, const Vector&, const Vector&)>& use) const {
    const Mesh& mesh = skin_.mesh();
    std::vector<std::uint32_t> usable;
    for (std::uint32_t t = 0; t < mesh.triangles.size(); ++t)
        if (skin_.usable(t)) usable.push_back(t);
    Sides(mesh, usable, skin_.size()).each([&](auto first, auto end) {
        const Vector &a = mesh.vertices[first->a], &b = mesh.vertices[first->b];
        const double border = height((a + b) * 0.5);
        const bool held = std::any_of(first, end, [&](const Sides::Side& side) {
            return !overhangs_[side.triangle] && holds(side.triangle, border);
        });
        for (auto side = first; held && side != end; ++side)
            if (overhangs_[side->triangle]) use(side->triangle, a, b);
    });
}

}  // namespace corvane::part::walls
