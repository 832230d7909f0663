#include "Settle.h"

#include <algorithm>
#include <cmath>

#include "../Elementary.h"
#include "../Vec.h"

namespace corvane::part::facets {
namespace {

/// Times nearer to another surface than to its own, and times off by what most corners are. Of
/// noise that is spread normally, five times its median is reached once in a thousand corners.
constexpr double kClearly = 5.0;
/// Of the rounding, which is for two steps of a float along each axis: a corner that is written as
/// the nearest number is off by half a step.
constexpr double kLeast = 0.25;
/// Facets that go over together. A step of a border has two to four; more only take time.
constexpr std::size_t kMostGroup = 8;
constexpr double kWidestTurn = 20.0;  // degrees between a facet and its surface

class Settler {
public:
    Settler(const Strips& strips, const MeshTopology& topology, std::vector<Region>& regions)
        : strips_(strips),
          topology_(topology),
          regions_(regions),
          regionOf_(strips.mesh().triangles.size()) {}

    void settle() {
        for (std::uint32_t number = 0; number < regions_.size(); ++number) {
            noise_.push_back(noiseOf(regions_[number]));
            for (const std::uint32_t strip : regions_[number].strips)
                for (const std::uint32_t facet : strips_.facetsOf(strip))
                    regionOf_[facet] = number;
        }
        for (std::uint32_t facet = 0; facet < regionOf_.size(); ++facet)
            if (isAtBorder(facet)) open_.push_back(facet);
        // Each move brings a facet much nearer to its surface or makes the borders shorter, so that
        // they come to an end.
        while (!open_.empty()) {
            const std::uint32_t facet = open_.back();
            open_.pop_back();
            visit(facet);
        }
        for (std::uint32_t facet = 0; facet < regionOf_.size(); ++facet)
            regions_[regionOf_[facet]].facets.push_back(facet);
        std::erase_if(regions_, [](const Region& region) { return region.facets.empty(); });
    }

private:
    [[nodiscard]] bool isAtBorder(std::uint32_t facet) const {
        return std::any_of(strips_.across(facet).begin(), strips_.across(facet).end(),
                           [&](std::uint32_t next) {
                               return next != kNoFacet && regionOf_[next] != regionOf_[facet];
                           });
    }

    /// The most between a corner and the surface of the region.
    [[nodiscard]] double missOf(std::uint32_t facet, std::uint32_t region) const {
        double most = 0.0;
        for (const std::uint32_t vertex : strips_.mesh().triangles[facet])
            most = std::max(
                most, std::abs(offsetFrom(regions_[region].surface, strips_.mesh().vertices[vertex])
                                   .distance));
        return most;
    }
    /// How far the corners of the region's strips are off its surface, most of them.
    [[nodiscard]] double noiseOf(const Region& region) const {
        std::vector<double> misses;
        for (const std::uint32_t strip : region.strips)
            for (const std::uint32_t vertex : strips_.verticesOf(strip))
                misses.push_back(
                    std::abs(offsetFrom(region.surface, strips_.mesh().vertices[vertex]).distance));
        const auto middle = misses.begin() + static_cast<std::ptrdiff_t>(misses.size() / 2);
        std::nth_element(misses.begin(), middle, misses.end());
        return *middle;
    }
    [[nodiscard]] bool agrees(std::uint32_t facet, std::uint32_t region) const {
        const auto& t = strips_.mesh().triangles[facet];
        const auto& v = strips_.mesh().vertices;
        const Offset offset =
            offsetFrom(regions_[region].surface, (v[t[0]] + v[t[1]] + v[t[2]]) * (1.0 / 3.0));
        const Vector outward = regions_[region].concave ? -offset.outward : offset.outward;
        return angleBetween(outward, topology_.normals[facet]) <= kWidestTurn;
    }

    /// How far a corner may be off the region's surface without any meaning.
    [[nodiscard]] double slackOf(std::uint32_t region) const {
        return std::max(kLeast * strips_.rounding(), kClearly * noise_[region]);
    }
    [[nodiscard]] bool isClearly(std::uint32_t facet, std::uint32_t own,
                                 std::uint32_t other) const {
        const double miss = missOf(facet, own);
        return miss > slackOf(own) &&
               kClearly * std::max(noise_[other], missOf(facet, other)) <= miss &&
               agrees(facet, other);
    }
    /// Whether both surfaces fit, as they do in a facet's breadth of where they are tangent. A flat
    /// face is out of that: the facets between an arc of its border and the chord are its own.
    [[nodiscard]] bool isEither(std::uint32_t facet, std::uint32_t own, std::uint32_t other) const {
        return regions_[own].surface.kind != SurfaceKind::Plane &&
               regions_[other].surface.kind != SurfaceKind::Plane &&
               missOf(facet, own) <= slackOf(own) && missOf(facet, other) <= slackOf(other) &&
               agrees(facet, other);
    }

    [[nodiscard]] double sharedWith(std::uint32_t facet, std::uint32_t next) const {
        const auto &t = strips_.mesh().triangles[facet], &other = strips_.mesh().triangles[next];
        std::vector<Vector> shared;
        for (const std::uint32_t vertex : t)
            if (std::find(other.begin(), other.end(), vertex) != other.end())
                shared.push_back(strips_.mesh().vertices[vertex]);
        return shared.size() == 2 ? distance(shared[0], shared[1]) : 0.0;
    }
    /// By how much the border between the regions becomes shorter if the facet goes over.
    [[nodiscard]] double gainOf(std::uint32_t facet, std::uint32_t own, std::uint32_t other) const {
        double gain = 0.0;
        for (const std::uint32_t next : strips_.across(facet)) {
            if (next == kNoFacet) continue;
            if (regionOf_[next] == other) gain += sharedWith(facet, next);
            if (regionOf_[next] == own) gain -= sharedWith(facet, next);
        }
        return gain;
    }

    /// True, for its caller to tell on.
    bool give(std::uint32_t facet, std::uint32_t region) {
        regionOf_[facet] = region;
        for (const std::uint32_t next : strips_.across(facet))
            if (next != kNoFacet) open_.push_back(next);
        return true;
    }
    /// The facet goes over, or with some beside it.
    bool goesOver(std::uint32_t facet, std::uint32_t own, std::uint32_t other) {
        if (isClearly(facet, own, other)) return give(facet, other);
        if (!isEither(facet, own, other)) return false;
        std::vector<std::uint32_t> group{facet};
        double gain = gainOf(facet, own, other);
        const double least = 1e-9 * longestSide(facet);
        for (std::size_t i = 0; i < group.size() && gain <= least; ++i)
            for (const std::uint32_t next : strips_.across(group[i])) {
                if (next == kNoFacet || regionOf_[next] != own || group.size() == kMostGroup ||
                    std::find(group.begin(), group.end(), next) != group.end() ||
                    !isEither(next, own, other))
                    continue;
                gain += gainOf(next, own, other);
                for (const std::uint32_t member : group)
                    gain += 2.0 * sharedWith(member, next);
                group.push_back(next);
                if (gain > least) break;
            }
        if (gain <= least) return false;
        for (const std::uint32_t member : group)
            give(member, other);
        return true;
    }
    [[nodiscard]] double longestSide(std::uint32_t facet) const {
        const auto& t = strips_.mesh().triangles[facet];
        const auto& v = strips_.mesh().vertices;
        return std::max(
            {distance(v[t[0]], v[t[1]]), distance(v[t[1]], v[t[2]]), distance(v[t[2]], v[t[0]])});
    }

    void visit(std::uint32_t facet) {
        const std::uint32_t own = regionOf_[facet];
        if (regions_[own].surface.kind == SurfaceKind::Other) return;
        for (const std::uint32_t next : strips_.across(facet)) {
            if (next == kNoFacet) continue;
            const std::uint32_t other = regionOf_[next];
            if (other != own && regions_[other].surface.kind != SurfaceKind::Other &&
                goesOver(facet, own, other))
                return;
        }
    }

    const Strips& strips_;
    const MeshTopology& topology_;
    std::vector<Region>& regions_;
    std::vector<std::uint32_t> regionOf_;  // by facet
    std::vector<double> noise_;            // by region
    std::vector<std::uint32_t> open_;      // facets to look at
};

}  // namespace

void settleFacets(const Strips& strips, const MeshTopology& topology,
                  std::vector<Region>& regions) {
    Settler(strips, topology, regions).settle();
}

}  // namespace corvane::part::facets
