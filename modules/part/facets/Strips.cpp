#include "Strips.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "../Vec.h"

namespace corvane::part::facets {
namespace {

constexpr double kFlat = 0.05;   // degrees between facets of one plane, which rounding makes
constexpr double kFitted = 2.0;  // a surface is off as well that is fitted to points which are
/// Of the rounding, which is for two steps of a float along each axis: half a step, evenly spread,
/// has a deviation of a twelfth of that, and a corner with the two across from it of a tenth. Twice
/// that is seldom passed.
constexpr double kTurning = 0.2;
constexpr std::uint32_t kNone = 0xffffffffU;

}  // namespace

Strips::Strips(const Mesh& mesh, const MeshTopology& topology, double precision)
    : mesh_(mesh), topology_(topology), rounding_(kFitted * precision) {
    findAcross();
    stripOf_.assign(mesh.triangles.size(), kNone);
    // The largest facets have the best normals: they gather what is in their planes first.
    std::vector<std::uint32_t> order(mesh.triangles.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t l, std::uint32_t r) {
        return topology.areas[l] > topology.areas[r];
    });
    facets_.reserve(order.size());
    for (const std::uint32_t facet : order)
        if (stripOf_[facet] == kNone) grow(facet);
    strips_.push_back({});
    strips_.back().facets = static_cast<std::uint32_t>(facets_.size());
    for (std::uint32_t i = 0; i < count(); ++i)
        describe(strips_[i]);
    strips_.back().vertices = static_cast<std::uint32_t>(vertices_.size());
    meet();
}

void Strips::findAcross() {
    across_.assign(mesh_.triangles.size(), {kNoFacet, kNoFacet, kNoFacet});
    std::vector<std::uint8_t> known(mesh_.triangles.size(), 0);
    for (const reading::MeshEdge& edge : topology_.edges) {
        if (edge.facets.size() != 2) continue;
        const std::uint32_t a = edge.facets[0], b = edge.facets[1];
        if (known[a] < 3) across_[a][known[a]++] = b;
        if (known[b] < 3) across_[b][known[b]++] = a;
    }
}

bool Strips::isIn(const Plane& plane, std::uint32_t facet) const {
    double longest = 0.0;
    const auto& t = mesh_.triangles[facet];
    for (std::size_t i = 0; i < 3; ++i) {
        const Vector& p = mesh_.vertices[t[i]];
        if (!(std::abs(dot(p - plane.origin, plane.normal)) <= rounding_)) return false;
        longest = std::max(longest, distance(p, mesh_.vertices[t[(i + 1) % 3]]));
    }
    // The rounding of its corners turns a narrow facet. One that is turned farther may be part of a
    // curved face, which has the first choice.
    const double width = 2.0 * topology_.areas[facet] / std::max(longest, 1e-300);
    const double slack = kFlat + degrees(std::atan2(kTurning * rounding_, width));
    return slack > 45.0 || angleBetween(plane.normal, topology_.normals[facet]) <= slack;
}

void Strips::grow(std::uint32_t seed) {
    const auto number = static_cast<std::uint32_t>(strips_.size());
    const std::size_t first = facets_.size();
    strips_.push_back({});
    strips_.back().facets = static_cast<std::uint32_t>(first);
    Plane plane{middleOf(seed), topology_.normals[seed]};
    stripOf_[seed] = number;
    facets_.push_back(seed);
    // More facets know the plane better, and reach what the first one missed.
    for (std::size_t known = first; known < facets_.size();) {
        known = facets_.size();
        for (std::size_t i = first; i < facets_.size(); ++i)
            for (const std::uint32_t next : across_[facets_[i]])
                if (next != kNoFacet && stripOf_[next] == kNone && isIn(plane, next)) {
                    stripOf_[next] = number;
                    facets_.push_back(next);
                }
        if (facets_.size() < first + 4 || facets_.size() < known + (known - first) / 4) break;
        plane = planeOf(first);
    }
}

Vector Strips::middleOf(std::uint32_t facet) const {
    const auto& t = mesh_.triangles[facet];
    return (mesh_.vertices[t[0]] + mesh_.vertices[t[1]] + mesh_.vertices[t[2]]) * (1.0 / 3.0);
}

/// The plane of the facets from that place on.
Strips::Plane Strips::planeOf(std::size_t first) const {
    Vector normal, middle;
    double area = 0.0;
    for (std::size_t i = first; i < facets_.size(); ++i) {
        const double own = topology_.areas[facets_[i]];
        normal = normal + topology_.normals[facets_[i]] * own;
        middle = middle + middleOf(facets_[i]) * own;
        area += own;
    }
    if (!(area > 0.0)) return {middleOf(facets_[first]), topology_.normals[facets_[first]]};
    return {middle * (1.0 / area), unit(normal)};
}

void Strips::describe(Strip& strip) {
    strip.vertices = static_cast<std::uint32_t>(vertices_.size());
    const std::uint32_t end = (&strip)[1].facets;
    Box box;
    for (std::uint32_t i = strip.facets; i < end; ++i) {
        const std::uint32_t facet = facets_[i];
        const auto& t = mesh_.triangles[facet];
        Vector sum;
        for (const std::uint32_t vertex : t) {
            vertices_.push_back(vertex);
            add(box, mesh_.vertices[vertex]);
            sum = sum + mesh_.vertices[vertex];
        }
        strip.centre = strip.centre + sum * (topology_.areas[facet] / 3.0);
        strip.normal = strip.normal + topology_.normals[facet] * topology_.areas[facet];
        strip.area += topology_.areas[facet];
    }
    const auto own = vertices_.begin() + strip.vertices;
    std::sort(own, vertices_.end());
    vertices_.erase(std::unique(own, vertices_.end()), vertices_.end());
    strip.centre = strip.area > 0.0 ? strip.centre * (1.0 / strip.area)
                                    : mesh_.vertices[vertices_[strip.vertices]];
    strip.normal = unit(strip.normal);
    strip.width = 2.0 * strip.area / std::max(diagonal(box), 1e-300);
}

void Strips::meet() {
    struct Side {
        std::uint32_t from, to;
        double length;
    };
    std::vector<Side> sides;
    for (const reading::MeshEdge& edge : topology_.edges) {
        if (edge.facets.size() != 2) continue;
        const std::uint32_t a = stripOf_[edge.facets[0]], b = stripOf_[edge.facets[1]];
        if (a == b) continue;
        const double length = distance(mesh_.vertices[edge.a], mesh_.vertices[edge.b]);
        sides.push_back({a, b, length});
        sides.push_back({b, a, length});
    }
    std::stable_sort(sides.begin(), sides.end(), [](const Side& l, const Side& r) {
        return l.from != r.from ? l.from < r.from : l.to < r.to;
    });
    std::size_t next = 0;
    for (std::uint32_t strip = 0; strip <= count(); ++strip) {
        strips_[strip].neighbours = static_cast<std::uint32_t>(neighbours_.size());
        for (; next < sides.size() && sides[next].from == strip; ++next) {
            const std::uint32_t other = sides[next].to;
            const bool same =
                neighbours_.size() > strips_[strip].neighbours && neighbours_.back().strip == other;
            if (!same)
                neighbours_.push_back(
                    {other, 0.0, angleBetween(strips_[strip].normal, strips_[other].normal)});
            neighbours_.back().length += sides[next].length;
        }
    }
}

}  // namespace corvane::part::facets
