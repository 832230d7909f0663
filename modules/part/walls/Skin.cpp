#include "Skin.h"

#include "../Elementary.h"
#include "Sides.h"

namespace corvane::part::walls {
namespace {

/// A body whose open borders are shorter than this part of the root of its area has only cracks.
constexpr double kCrack = 0.1;
/// The exact surface is at most as far from a facet as this part of the facet's longest side: six
/// facets around a circle.
constexpr double kSagitta = 0.15;
/// Cosine between a facet and the surface that it can belong to.
constexpr double kSameSide = 0.7;
/// Corners of a mesh are on the surface to this part of the part's size: files have seven digits.
constexpr double kFit = 1e-5;
constexpr float kUnusable = 9.0F;

/// Millimetres from the origin beyond which there is no part, but rounding.
constexpr double kFarthest = 1e12;

bool isFinite(const Vector& v) {
    return std::abs(v.x) < kFarthest && std::abs(v.y) < kFarthest && std::abs(v.z) < kFarthest;
}

}  // namespace

Skin::Skin(const Model& model, const Mesh& mesh) : model_(model), mesh_(mesh) {
    findNormals();
    findBodies();
    buildTree();
}

std::size_t Skin::body(std::uint32_t triangle) const {
    return static_cast<std::size_t>(face(triangle).solid);
}

bool Skin::anyClosed() const {
    return !tree_.empty() && std::find(closed_.begin(), closed_.end(), true) != closed_.end();
}

Vector Skin::facetNormal(std::uint32_t triangle) const {
    const Small& n = normals_[triangle];
    return {n.x, n.y, n.z};
}

void Skin::findNormals() {
    normals_.assign(mesh_.triangles.size(), {kUnusable, 0, 0});
    areas_.assign(mesh_.triangles.size(), 0.0);
    Box box;
    for (std::uint32_t t = 0; t < mesh_.triangles.size(); ++t) {
        const bool finite =
            isFinite(corner(t, 0)) && isFinite(corner(t, 1)) && isFinite(corner(t, 2));
        if (!finite || mesh_.faces[t] < 1) continue;
        const Vector across = cross(corner(t, 1) - corner(t, 0), corner(t, 2) - corner(t, 0));
        const Vector n = unit(across);
        if (!(std::abs(dot(n, n) - 1.0) < 1e-6)) continue;
        areas_[t] = length(across) / 2;
        normals_[t] = {static_cast<float>(n.x), static_cast<float>(n.y), static_cast<float>(n.z)};
        for (std::size_t i = 0; i < 3; ++i)
            add(box, corner(t, i));
    }
    size_ = diagonal(box);
}

/// The length of the borders of what is no solid.
double Skin::openLength() const {
    std::vector<std::uint32_t> triangles;
    for (std::uint32_t t = 0; t < normals_.size(); ++t)
        if (usable(t) && body(t) == 0) triangles.push_back(t);
    double sum = 0.0;
    Sides(mesh_, triangles, size_).each([&](auto first, auto end) {
        if (end - first == 1) sum += distance(mesh_.vertices[first->a], mesh_.vertices[first->b]);
    });
    return sum;
}

/// Which bodies are closed, and turns out the normals of one that is written inside out.
void Skin::findBodies() {
    const std::size_t bodies = model_.solids.size() + 1;
    std::vector<double> volumes(bodies, 0.0), areas(bodies, 0.0);
    for (std::uint32_t t = 0; t < normals_.size(); ++t) {
        if (!usable(t)) continue;
        // From a corner of the part, so that small parts far away keep their digits.
        const Vector& zero = mesh_.vertices[mesh_.triangles[0][0]];
        const Vector a = corner(t, 0) - zero, b = corner(t, 1) - zero, c = corner(t, 2) - zero;
        const std::size_t at = body(t);
        if (isFinite(zero)) volumes[at] += dot(a, cross(b, c));
        areas[at] += area(t);
    }
    closed_.assign(bodies, false);
    for (std::size_t i = 0; i < bodies; ++i)
        closed_[i] = areas[i] > 0.0 && (i > 0 || openLength() < kCrack * std::sqrt(areas[i]));
    for (std::uint32_t t = 0; t < normals_.size(); ++t) {
        Small& n = normals_[t];
        if (usable(t) && volumes[body(t)] < 0.0) n = {-n.x, -n.y, -n.z};
    }
}

void Skin::buildTree() {
    Box box;
    for (std::uint32_t t = 0; t < normals_.size(); ++t)
        if (usable(t)) add(box, corner(t, 0));
    const Vector centre = isEmpty(box) ? Vector{} : (box.least + box.greatest) * 0.5;
    const auto put = [](float* to, const Vector& v) {
        to[0] = static_cast<float>(v.x);
        to[1] = static_cast<float>(v.y);
        to[2] = static_cast<float>(v.z);
    };
    std::vector<Bvh::Facet> facets;
    facets.reserve(normals_.size());
    for (std::uint32_t t = 0; t < normals_.size(); ++t) {
        if (!usable(t)) continue;
        Bvh::Facet facet{};
        put(facet.a, corner(t, 0) - centre);
        put(facet.ab, corner(t, 1) - corner(t, 0));
        put(facet.ac, corner(t, 2) - corner(t, 0));
        put(facet.normal, facetNormal(t));
        facet.triangle = t;
        facet.body = static_cast<int>(body(t));
        facets.push_back(facet);
    }
    tree_ = Bvh(std::move(facets), centre);
}

/// Whether the corners are on the surface that was made out below the facets: a cone that is nearly
/// a cylinder may be taken for one.
bool Skin::isFitted(std::uint32_t triangle) const {
    for (std::size_t i = 0; i < 3; ++i) {
        const Offset offset = offsetFrom(face(triangle).surface, corner(triangle, i));
        if (!offset.isKnown || !(std::abs(offset.distance) <= kFit * size_)) return false;
    }
    return true;
}

Skin::Spot Skin::exactly(std::uint32_t triangle, const Vector& point) const {
    const Vector flat = facetNormal(triangle);
    Spot spot{point, flat, 0.0, false};
    const auto [away, direction, isKnown] = offsetFrom(face(triangle).surface, point);
    if (!isKnown) return spot;
    const double side = dot(direction, flat);
    if (std::abs(side) < kSameSide) return spot;
    double longest = 0.0;  // squared
    for (std::size_t i = 0; i < 3; ++i) {
        const Vector along = corner(triangle, (i + 1) % 3) - corner(triangle, i);
        longest = std::max(longest, dot(along, along));
    }
    if (!(away * away <= kSagitta * kSagitta * longest)) return spot;
    if (model_.isMesh && !isFitted(triangle)) return spot;
    spot.exact = true;
    spot.point = point - direction * away;
    spot.normal = side > 0.0 ? direction : -direction;
    spot.shift = side > 0.0 ? -away : away;
    return spot;
}

}  // namespace corvane::part::walls
