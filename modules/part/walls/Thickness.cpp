#include "Thickness.h"

#include "Thinnest.h"

namespace corvane::part::walls {
namespace {

class WallFinder {
public:
    explicit WallFinder(const Skin& skin)
        : skin_(skin),
          samples_(skin, Samples::Vertices::Apart),
          probe_(skin, Medium::Material),
          bySphere_(probe_, samples_, faceOf,
                    [this](const Sample& sample) { return probe_.measure(sample).sphere; }),
          byRay_(probe_, samples_, faceOf,
                 [this](const Sample& sample) { return probe_.measureRay(sample); }) {}

    Walls find() {
        walls_.measurable = true;
        walls_.byVertex.assign(skin_.mesh().vertices.size(), 0.0F);
        samples_.each([&](const Sample& sample) { take(sample); });
        fillVertices();
        const auto any = [](const Thickness&) { return 0; };
        walls_.places = bySphere_.places(any);
        walls_.placesByRay = byRay_.places(any);
        if (!walls_.places.empty()) walls_.smallestBySphere = walls_.places.front();
        if (!walls_.placesByRay.empty()) walls_.smallestByRay = walls_.placesByRay.front();
        walls_.typical = typical();
        return std::move(walls_);
    }

private:
    static int faceOf(const Thickness& place) { return place.faces[0]; }

    void take(const Sample& sample) {
        if (!skin_.isClosed(sample.triangle) || !probe_.isDue()) return;
        const Probe::Reading reading = probe_.measure(sample);
        byRay_.see(sample, reading.ray);
        bySphere_.see(sample, reading.sphereOrBetween());
        const Thickness& sphere = reading.sphere.place;
        if (sample.vertex != Sample::kNoVertex && sphere.value > 0.0) {
            float& at = walls_.byVertex[sample.vertex];
            const auto value = static_cast<float>(sphere.value);
            at = at > 0.0F ? std::min(at, value) : value;
        }
        if (!reading.sphere.isWall) return;
        if (sphere.value > walls_.largestBySphere.value) walls_.largestBySphere = sphere;
        shares_.emplace_back(static_cast<float>(sphere.value), static_cast<float>(sample.area));
    }

    /// Vertices without a sample take the value of a neighbour.
    void fillVertices() {
        std::vector<float>& values = walls_.byVertex;
        for (std::uint32_t v = 0; v < values.size(); ++v)
            values[v] = values[samples_.spokesman(v)];
        for (const auto& t : skin_.mesh().triangles) {
            const float most = std::max({values[t[0]], values[t[1]], values[t[2]]});
            for (const std::uint32_t v : t)
                if (values[v] == 0.0F) values[v] = most;
        }
    }

    double typical() {
        std::sort(shares_.begin(), shares_.end());
        double all = 0.0, below = 0.0;
        for (const auto& [value, area] : shares_)
            all += static_cast<double>(area);
        for (const auto& [value, area] : shares_) {
            below += static_cast<double>(area);
            if (below >= all / 2) return static_cast<double>(value);
        }
        return 0.0;
    }

    const Skin& skin_;
    Samples samples_;
    Probe probe_;
    Walls walls_;
    Thinnest<int> bySphere_, byRay_;
    std::vector<std::pair<float, float>> shares_;  // thickness and area
};

}  // namespace

Walls findWalls(const Skin& skin) {
    return skin.anyClosed() ? WallFinder(skin).find() : Walls{};
}

}  // namespace corvane::part::walls
