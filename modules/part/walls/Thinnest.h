#pragma once

#include <map>

#include "Probe.h"
#include "Separate.h"

namespace corvane::part::walls {

/// Keeps the thinnest place for each of some keys, such as faces or pairs of them, and further ones
/// that are thin each for itself.
template <typename Key>
class Thinnest {
public:
    /// Every sample of a face is told, with what was measured, be it a wall or not.
    void see(int face, const Thickness& place, bool isWall, const Sample& sample) {
        spots_[face].push_back(
            {sample.point, place.value, isWall, sample.triangle, place.faces[1]});
    }

    void take(const Key& key, const Thickness& place, const Sample& sample) {
        const auto [it, added] = best_.try_emplace(key, Best{place, sample});
        if (!added && place.value < it->second.place.value) it->second = {place, sample};
    }

    /// The places, thinnest first. The first ones are followed to where they are thinnest, by
    /// `measure`, which gives a sample's place, of value 0 if it is none of the key. `acrossOf`
    /// gives the face across that a further place of the key must have; 0 for any.
    template <typename Measure, typename Across>
    std::vector<Thickness> places(const Probe& probe, const Samples& samples, Measure measure,
                                  Across acrossOf) {
        std::vector<std::pair<Key, Best>> all(best_.begin(), best_.end());
        sort(all);
        const std::size_t count = std::min(all.size(), kMostFollowed);
        for (std::size_t i = 0; i < count; ++i) {
            const Best start = all[i].second;
            follow(all[i].first, all[i].second, probe, samples, measure);
            addFurther(all, i, start, probe, samples, measure, acrossOf(start.place));
        }
        sort(all);
        std::vector<Thickness> places;
        places.reserve(all.size());
        for (const auto& [key, best] : all)
            places.push_back(best.place);
        return places;
    }

private:
    static constexpr std::size_t kMostFollowed = 500;
    static constexpr std::size_t kMostFurther = 7;  // of a key
    static constexpr int kMostSteps = 12;
    struct Best {
        Thickness place;
        Sample sample;
    };

    static void sort(std::vector<std::pair<Key, Best>>& all) {
        std::stable_sort(all.begin(), all.end(), [](const auto& l, const auto& r) {
            return l.second.place.value < r.second.place.value;
        });
    }

    /// Adds the further places of a key, whose thinnest one began at `start`, after all others.
    template <typename Measure>
    void addFurther(std::vector<std::pair<Key, Best>>& all, std::size_t at, const Best& start,
                    const Probe& probe, const Samples& samples, Measure measure, int across) {
        const Key key = all[at].first;
        const int face = start.place.faces[0];
        const Separate& places = separate_.try_emplace(face, spots_[face]).first->second;
        std::vector<Thickness> kept{start.place, all[at].second.place};
        for (const Spot& spot : places.further(across, start.sample.point)) {
            Best best{{}, samples.at(spot.triangle, spot.point)};
            best.place = measure(key, best.sample);
            if (!(best.place.value > 0.0)) continue;
            follow(key, best, probe, samples, measure);
            if (std::any_of(kept.begin(), kept.end(), [&](const Thickness& other) {
                    return isSame(best.place, other, places.step());
                }))
                continue;
            kept.push_back(best.place);
            all.emplace_back(key, best);
            if (kept.size() == kMostFurther + 2) return;
        }
    }

    /// Whether two places are one, be it seen from its other side.
    static bool isSame(const Thickness& a, const Thickness& b, double near) {
        return std::min(distance(a.point, b.point), distance(a.point, b.opposite)) <= near;
    }

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
    std::map<int, std::vector<Spot>> spots_;  // by face
    std::map<int, Separate> separate_;
};

}  // namespace corvane::part::walls
