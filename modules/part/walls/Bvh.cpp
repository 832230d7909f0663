#include "Bvh.h"

#include <array>

#include "../Vec.h"
#include "BvhBuilder.h"

namespace corvane::part::walls {
namespace {

/// More than any tree is deep: each level leaves at most three children waiting.
constexpr std::size_t kStack = 256;
/// Farther than any box.
constexpr float kNowhere = 1e30F;

/// No less than `most`, though it is rounded.
float above(double most) {
    return static_cast<float>(most * (1.0 + 1e-6));
}

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

/// Finds children below which no normal passes the filter, all of a node at once. A sphere in a
/// thin plate holds many facets that do not count.
class Bvh::Looks {
public:
    explicit Looks(const Filter& filter)
        : all_(filter.limit >= 1.0), limit_(static_cast<float>(filter.limit) + kRounding) {
        const double d[3] = {filter.direction.x, filter.direction.y, filter.direction.z};
        for (std::size_t i = 0; i < 3; ++i)
            direction_[i] = static_cast<float>(d[i]);
    }

    /// Puts those children out of reach.
    [[nodiscard]] Floats applied(const Node& node, const Floats& far) const {
        if (all_) return far;
        Floats least{};
        for (std::size_t i = 0; i < 3; ++i)
            least += direction_[i] * (direction_[i] > 0.0F ? node.least[i] : node.greatest[i]);
        return least <= limit_ ? far : Floats{} + kNowhere;
    }

private:
    static constexpr float kRounding = 1e-6F;
    bool all_;
    float limit_;
    float direction_[3];
};

/// Goes through the tree, nearest first. `distance` gives how far each box of a node is;
/// `most` is how far is still of interest, which `leaf` may shorten.
template <typename Distance, typename Leaf>
void Bvh::visit(const Filter& filter, Distance distance, Leaf leaf, const double& most) const {
    if (nodes_.empty()) return;
    const Looks looks(filter);
    std::array<Pending, kStack> stack;
    std::size_t height = 0;
    std::uint64_t work = 0;
    float limit = above(most);
    stack[height++] = {0.0F, 0, 0};
    while (height > 0) {
        const Pending next = stack[--height];
        if (next.distance > limit) continue;
        work += 1 + next.count;
        if (next.count > 0) {
            for (std::uint32_t i = 0; i < next.count; ++i)
                leaf(facets_[next.child + i]);
            limit = above(most);
            continue;
        }
        const Node& node = nodes_[next.child];
        const Floats far = looks.applied(node, distance(node));
        const std::size_t base = height;
        for (std::size_t k = 0; k < node.children; ++k) {
            if (!(far[k] <= limit)) continue;
            std::size_t at = height++;
            for (; at > base && stack[at - 1].distance < far[k]; --at)
                stack[at] = stack[at - 1];
            stack[at] = {far[k], node.child[k], node.count[k]};
        }
    }
    if (filter.work) *filter.work += work;
}

Bvh::Hit Bvh::ray(const Vector& origin, const Vector& direction, double from, double to,
                  const Filter& filter, bool any) const {
    const Vector start = origin - centre_;
    const auto inverse = [](double d) {
        constexpr double kTiny = 1e-18;
        return static_cast<float>(1.0 / (std::abs(d) > kTiny ? d : kTiny));
    };
    const float o[3] = {static_cast<float>(start.x), static_cast<float>(start.y),
                        static_cast<float>(start.z)};
    const float inv[3] = {inverse(direction.x), inverse(direction.y), inverse(direction.z)};
    const float first = static_cast<float>(from);
    double most = to, found = 0.0;
    const Facet* best = nullptr;
    const auto distance = [&](const Node& node) {
        Floats in = Floats{} + first, out = Floats{} + kNowhere;
        for (std::size_t i = 0; i < 3; ++i) {
            const bool back = inv[i] < 0.0F;
            const Floats near = ((back ? node.high[i] : node.low[i]) - o[i]) * inv[i];
            const Floats away = ((back ? node.low[i] : node.high[i]) - o[i]) * inv[i];
            in = in > near ? in : near;
            out = out < away ? out : away;
        }
        return in <= out ? in : Floats{} + kNowhere;
    };
    visit(
        filter, distance,
        [&](const Facet& facet) {
            if (!counts(facet, filter)) return;
            const double t = distanceAlong(facet, start, direction);
            if (t < from || t >= most) return;
            found = t;
            // Nothing is nearer than what lies before the start.
            most = any ? -1e300 : t;
            best = &facet;
        },
        most);
    if (!best) return {};
    return {found, best->triangle, origin + direction * found};
}

Bvh::Hit Bvh::nearest(const Vector& point, double radius, const Filter& filter) const {
    const Vector p = point - centre_;
    const float o[3] = {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
    double most = radius * radius;
    const Facet* best = nullptr;
    Vector found;
    visit(
        filter,
        [&](const Node& node) {
            Floats sum{};
            for (std::size_t i = 0; i < 3; ++i) {
                const Floats below = node.low[i] - o[i], above = o[i] - node.high[i];
                const Floats more = below > above ? below : above;
                const Floats d = more > 0.0F ? more : Floats{};
                sum += d * d;
            }
            return sum;
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
