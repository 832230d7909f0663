#include "Thickness.h"
#include "Thinnest.h"

namespace corvane::part::walls {

Gaps findGaps(const Skin& skin) {
    Gaps gaps;
    if (!skin.anyClosed()) return gaps;
    using Pair = std::pair<int, int>;
    const Samples samples(skin, Samples::Vertices::Apart);
    Probe probe(skin, Medium::Air);
    Thinnest<Pair> narrowest(
        probe, samples,
        [](const Thickness& place) { return Pair(std::minmax(place.faces[0], place.faces[1])); },
        [&](const Sample& sample) { return probe.measure(sample).sphere; });
    samples.each([&](const Sample& sample) {
        if (skin.isClosed(sample.triangle) && probe.isDue())
            narrowest.see(sample, probe.measure(sample).sphereOrBetween());
    });
    gaps.places = narrowest.places([](const Thickness& place) { return place.faces[1]; });
    return gaps;
}

}  // namespace corvane::part::walls
