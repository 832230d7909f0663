#pragma once

#include <map>

#include "Probe.h"

namespace corvane::part::walls {

/// Keeps the thinnest place for each of some keys, such as faces or pairs of them.
template <typename Key>
class Thinnest {
public:
    void take(const Key& key, const Thickness& place, const Sample& sample) {
        const auto [it, added] = best_.try_emplace(key, Best{place, sample});
        if (!added && place.value < it->second.place.value) it->second = {place, sample};
    }

    /// The places, thinnest first. The first ones are followed to where they are thinnest, by
    /// `measure`, which gives a sample's place, of value 0 if it is none of the key.
    template <typename Measure>
    std::vector<Thickness> places(const Probe& probe, const Samples& samples, Measure measure) {
        std::vector<std::pair<Key, Best>> all(best_.begin(), best_.end());
        const auto thinner = [](const auto& l, const auto& r) {
            return l.second.place.value < r.second.place.value;
        };
        std::stable_sort(all.begin(), all.end(), thinner);
        for (std::size_t i = 0; i < std::min(all.size(), kMostFollowed); ++i)
            follow(all[i].first, all[i].second, probe, samples, measure);
        std::stable_sort(all.begin(), all.end(), thinner);
        std::vector<Thickness> places;
        places.reserve(all.size());
        for (const auto& [key, best] : all)
            places.push_back(best.place);
        return places;
    }

private:
    static constexpr std::size_t kMostFollowed = 500;
    static constexpr int kMostSteps = 12;
    struct Best {
        Thickness place;
        Sample sample;
    };

    /// Steps from side to side: the place across from the other end is at most as thick.
    template <typename Measure>
    static void follow(const Key& key, Best& best, const Probe& probe, const Samples& samples,
                       Measure measure) {
        for (int step = 0; step < kMostSteps; ++step) {
            const Bvh::Hit hit = probe.across(best.sample, best.place.opposite);
            if (!hit) return;
            const Sample sample = samples.at(hit.triangle, hit.point);
            const Thickness place = measure(key, sample);
            if (!(place.value > 0.0) || place.value >= best.place.value * (1.0 - 1e-9)) return;
            best = {place, sample};
        }
    }

    std::map<Key, Best> best_;
};

}  // namespace corvane::part::walls
