#include "Bvh.h"

#include <array>

#include "../Vec.h"
#include "BvhBuilder.h"

namespace corvane::part::walls {
namespace {

/// More than any tree is deep: each level leaves at most three children waiting.
constexpr std::size_t kStack = 256;

Vector from(const float* p) {
    return {p[0], p[1], p[2]};
}

bool counts(const Bvh::Facet& facet, const Bvh::Filter& filter) {
    if (filter.body != Bvh::kAnyBody && filter.body != facet.body) return false;
    return facet.normal[0] * filter.direction.x + facet.normal[1] * filter.direction.y +
               facet.normal[2] * filter.direction.z <=
           filter.limit;
}

/// How far along the ray the facet is, or -1. A ray along the border of two facets meets one.
double distanceAlong(const Bvh::Facet& facet, const Vector& origin, const Vector& direction) {
    constexpr double kBorder = 1e-6;
    const Vector ab = from(facet.ab), ac = from(facet.ac);
    const Vector p = cross(direction, ac);
    const double determinant = dot(ab, p);
    if (determinant == 0.0) return -1.0;
    const double inverse = 1.0 / determinant;
    const Vector s = origin - from(facet.a);
    const double u = dot(s, p) * inverse;
    if (u < -kBorder || u > 1.0 + kBorder) return -1.0;
    const Vector q = cross(s, ab);
    const double v = dot(direction, q) * inverse;
    if (v < -kBorder || u + v > 1.0 + kBorder) return -1.0;
    return dot(ac, q) * inverse;
}

/// The point of the triangle nearest to `p`, as parts of the two sides.
Vector nearestPoint(const Bvh::Facet& facet, const Vector& p) {
    const Vector a = from(facet.a), ab = from(facet.ab), ac = from(facet.ac), ap = p - a;
    const double d1 = dot(ab, ap), d2 = dot(ac, ap);
    if (d1 <= 0.0 && d2 <= 0.0) return a;
    const double abab = dot(ab, ab), abac = dot(ab, ac), acac = dot(ac, ac);
    const double d3 = d1 - abab, d4 = d2 - abac;
    if (d3 >= 0.0 && d4 <= d3) return a + ab;
    const double vc = d1 * d4 - d3 * d2;
    if (vc <= 0.0 && d1 >= 0.0 && d3 <= 0.0) return a + ab * (d1 / (d1 - d3));
    const double d5 = d1 - abac, d6 = d2 - acac;
    if (d6 >= 0.0 && d5 <= d6) return a + ac;
    const double vb = d5 * d2 - d1 * d6;
    if (vb <= 0.0 && d2 >= 0.0 && d6 <= 0.0) return a + ac * (d2 / (d2 - d6));
    const double va = d3 * d6 - d5 * d4;
    if (va <= 0.0 && d4 - d3 >= 0.0 && d5 - d6 >= 0.0) {
        const double w = (d4 - d3) / ((d4 - d3) + (d5 - d6));
        return a + ab * (1.0 - w) + ac * w;
    }
    const double sum = va + vb + vc;
    return sum > 0.0 ? a + ab * (vb / sum) + ac * (vc / sum) : a;
}

}  // namespace

Bvh::Bvh(std::vector<Facet> facets, const Vector& centre)
    : facets_(std::move(facets)), centre_(centre) {
    nodes_ = Builder(facets_).build();
}

/// Whether any normal below the node's child passes the filter. A sphere in a thin plate holds many
/// facets that do not.
bool Bvh::mayCount(const Node& node, std::size_t child, const Filter& filter) {
    constexpr double kScale = 127.0;
    const double d[3] = {filter.direction.x, filter.direction.y, filter.direction.z};
    double least = 0.0;
    for (std::size_t i = 0; i < 3; ++i)
        least += std::min(d[i] * node.least[i][child], d[i] * node.greatest[i][child]);
    return least <= filter.limit * kScale;
}

/// Goes through the tree, nearest first. `distance` fills in how far each box of a node is;
/// `most` is how far is still of interest, which `leaf` may shorten.
template <typename Distance, typename Leaf>
void Bvh::visit(const Filter& filter, Distance distance, Leaf leaf, const double& most) const {
    if (nodes_.empty()) return;
    std::array<Pending, kStack> stack;
    std::size_t height = 0;
    std::uint64_t work = 0;
    stack[height++] = {0.0F, 0, 0};
    while (height > 0) {
        const Pending next = stack[--height];
        if (static_cast<double>(next.distance) > most) continue;
        work += 1 + next.count;
        if (next.count > 0) {
            for (std::uint32_t i = 0; i < next.count; ++i)
                leaf(facets_[next.child + i]);
            continue;
        }
        const Node& node = nodes_[next.child];
        std::array<float, kWidth> far;
        distance(node, far);
        const std::size_t base = height;
        for (std::size_t k = 0; k < node.children; ++k) {
            if (!(static_cast<double>(far[k]) <= most) || !mayCount(node, k, filter)) continue;
            std::size_t at = height++;
            for (; at > base && stack[at - 1].distance < far[k]; --at)
                stack[at] = stack[at - 1];
            stack[at] = {far[k], node.child[k], node.count[k]};
        }
    }
    if (filter.work) *filter.work += work;
}

Bvh::Hit Bvh::ray(const Vector& origin, const Vector& direction, double from, double to,
                  const Filter& filter) const {
    const Vector start = origin - centre_;
    const auto inverse = [](double d) {
        constexpr double kTiny = 1e-18;
        return static_cast<float>(1.0 / (std::abs(d) > kTiny ? d : kTiny));
    };
    const float o[3] = {static_cast<float>(start.x), static_cast<float>(start.y),
                        static_cast<float>(start.z)};
    const float inv[3] = {inverse(direction.x), inverse(direction.y), inverse(direction.z)};
    const float first = static_cast<float>(from);
    double most = to;
    const Facet* best = nullptr;
    const auto distance = [&](const Node& node, std::array<float, kWidth>& far) {
        for (std::size_t k = 0; k < kWidth; ++k) {
            float in = first, out = 1e30F;
            for (std::size_t i = 0; i < 3; ++i) {
                const float t0 = (node.low[i][k] - o[i]) * inv[i];
                const float t1 = (node.high[i][k] - o[i]) * inv[i];
                in = std::max(in, std::min(t0, t1));
                out = std::min(out, std::max(t0, t1));
            }
            far[k] = in <= out ? in : 1e30F;
        }
    };
    visit(
        filter, distance,
        [&](const Facet& facet) {
            if (!counts(facet, filter)) return;
            const double t = distanceAlong(facet, start, direction);
            if (t < from || t >= most) return;
            most = t;
            best = &facet;
        },
        most);
    if (!best) return {};
    return {most, best->triangle, origin + direction * most};
}

Bvh::Hit Bvh::nearest(const Vector& point, double radius, const Filter& filter) const {
    const Vector p = point - centre_;
    const float o[3] = {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
    double most = radius * radius;
    const Facet* best = nullptr;
    Vector found;
    visit(
        filter,
        [&](const Node& node, std::array<float, kWidth>& far) {
            for (std::size_t k = 0; k < kWidth; ++k) {
                float sum = 0.0F;
                for (std::size_t i = 0; i < 3; ++i) {
                    const float d = std::max({node.low[i][k] - o[i], 0.0F, o[i] - node.high[i][k]});
                    sum += d * d;
                }
                far[k] = sum;
            }
        },
        [&](const Facet& facet) {
            if (!counts(facet, filter)) return;
            const Vector q = nearestPoint(facet, p);
            const double squared = dot(q - p, q - p);
            if (squared >= most) return;
            most = squared;
            best = &facet;
            found = q;
        },
        most);
    if (!best) return {};
    return {std::sqrt(most), best->triangle, found + centre_};
}

}  // namespace corvane::part::walls
