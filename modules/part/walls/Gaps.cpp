#include "Thickness.h"
#include "Thinnest.h"

namespace corvane::part::walls {

Gaps findGaps(const Skin& skin) {
    Gaps gaps;
    if (!skin.anyClosed()) return gaps;
    using Pair = std::pair<int, int>;
    const Samples samples(skin);
    Probe probe(skin, Medium::Air);
    const auto pairOf = [](const Thickness& place) {
        return Pair(std::minmax(place.faces[0], place.faces[1]));
    };
    Thinnest<Pair> narrowest;
    samples.each([&](const Sample& sample) {
        if (!skin.isClosed(sample.triangle) || !probe.isDue()) return;
        const Probe::Reading reading = probe.measure(sample);
        narrowest.see(skin.mesh().faces[sample.triangle],
                      reading.sphereIsWall ? reading.sphere : reading.ray, reading.sphereIsWall,
                      sample);
        if (reading.sphereIsWall) narrowest.take(pairOf(reading.sphere), reading.sphere, sample);
    });
    const auto sphere = [&](const Pair& pair, const Sample& sample) {
        const Probe::Reading reading = probe.measure(sample);
        const bool same = reading.sphereIsWall && pairOf(reading.sphere) == pair;
        return same ? reading.sphere : Thickness{};
    };
    gaps.places = narrowest.places(probe, samples, sphere,
                                   [](const Thickness& place) { return place.faces[1]; });
    return gaps;
}

}  // namespace corvane::part::walls
