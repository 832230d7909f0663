#pragma once

#include <functional>
#include <map>

#include "Probe.h"
#include "Separate.h"

namespace corvane::part::walls {

/// Keeps the thinnest place for each of some keys, such as faces or pairs of them, and further ones
/// that are thin each for itself.
template <typename Key>
class Thinnest {
public:
    using Measured = Probe::Measured;
    using KeyOf = std::function<Key(const Thickness&)>;
    using Measure = std::function<Measured(const Sample&)>;

    /// `keyOf` gives the key of a place; `measure` what is at a sample.
    Thinnest(const Probe& probe, const Samples& samples, KeyOf keyOf, Measure measure)
        : probe_(probe),
          samples_(samples),
          keyOf_(std::move(keyOf)),
          measure_(std::move(measure)) {}

    /// Every sample is told, with what was measured, be it a wall or not.
    void see(const Sample& sample, const Measured& measured) {
        const Thickness& place = measured.place;
        spots_[samples_.face(sample)].push_back(
            {sample.point, place.value, measured.isWall, sample.triangle, place.faces[1]});
        if (measured.isWall) take({measured, sample});
    }

    /// The places, thinnest first. The first ones are followed to where they are thinnest.
    /// `acrossOf` gives the face across that a further place of the key must have; 0 for any.
    template <typename Across>
    std::vector<Thickness> places(Across acrossOf) {
        takeOtherSides();
        std::vector<std::pair<Key, Best>> all(best_.begin(), best_.end());
        sort(all);
        const std::size_t count = std::min(all.size(), kMostFollowed);
        for (std::size_t i = 0; i < count; ++i) {
            const Best start = all[i].second;
            follow(all[i].first, all[i].second);
            addFurther(all, i, start, acrossOf(start.place()));
        }
        sort(all);
        std::vector<Thickness> places;
        places.reserve(all.size());
        for (const auto& [key, best] : all)
            places.push_back(best.place());
        return places;
    }

private:
    static constexpr std::size_t kMostFollowed = 500;
    static constexpr std::size_t kMostFurther = 7;  // of a key
    struct Best {
        Measured measured;
        Sample sample;
        [[nodiscard]] const Thickness& place() const { return measured.place; }
    };

    static void sort(std::vector<std::pair<Key, Best>>& all) {
        std::stable_sort(all.begin(), all.end(), [](const auto& l, const auto& r) {
            return l.second.place().value < r.second.place().value;
        });
    }

    void take(const Best& found) {
        const auto [it, added] = best_.try_emplace(keyOf_(found.place()), found);
        if (!added && found.place().value < it->second.place().value) it->second = found;
    }

    /// The thin part of a face may lie between its samples, but below one of the other side.
    void takeOtherSides() {
        std::vector<Best> found;
        for (const auto& [key, best] : best_) {
            const Sample sample = samples_.at(best.measured.triangle, best.place().opposite);
            if (const Measured measured = measure_(sample); measured.isWall)
                found.push_back({measured, sample});
        }
        for (const Best& best : found)
            take(best);
    }

    [[nodiscard]] const Separate& separateOf(int face) {
        return separate_.try_emplace(face, spots_[face]).first->second;
    }

    /// Adds the further places of a key, whose thinnest one began at `start`, after all others.
    void addFurther(std::vector<std::pair<Key, Best>>& all, std::size_t at, const Best& start,
                    int across) {
        const Key key = all[at].first;
        const Separate& places = separateOf(start.place().faces[0]);
        std::vector<Thickness> kept{start.place(), all[at].second.place()};
        for (const Spot& spot : places.further(across, start.sample.point)) {
            Best best{{}, samples_.at(spot.triangle, spot.point)};
            best.measured = measure_(best.sample);
            if (!isOf(key, best.measured)) continue;
            follow(key, best);
            if (std::any_of(kept.begin(), kept.end(), [&](const Thickness& other) {
                    return isSame(best.place(), other, places.step()) ||
                           isJoined(best, other, places.step());
                }))
                continue;
            kept.push_back(best.place());
            all.emplace_back(key, best);
            if (kept.size() == kMostFurther + 2) return;
        }
    }

    /// Whether two places are one, be it seen from its other side.
    static bool isSame(const Thickness& a, const Thickness& b, double near) {
        return std::min(distance(a.point, b.point), distance(a.point, b.opposite)) <= near;
    }

    /// Whether the surface is `near` the straight way to the other place and the wall thin all
    /// along it, which spots at the border of a face may be too far apart to tell.
    [[nodiscard]] bool isJoined(const Best& best, const Thickness& other, double near) const {
        constexpr int kLooks = 8;
        const Thickness& place = best.place();
        for (int i = 1; i < kLooks; ++i) {
            const Vector way =
                (other.point - best.sample.point) * (static_cast<double>(i) / kLooks);
            const Bvh::Hit hit = probe_.beside(best.sample, way);
            if (!hit || distance(hit.point, best.sample.point + way) > near) return false;
            const Measured between = measure_(samples_.at(hit.triangle, hit.point));
            if (!between.isWall || Separate::parts(between.place.value, place.value, other.value))
                return false;
        }
        return true;
    }

    [[nodiscard]] bool isOf(const Key& key, const Measured& measured) const {
        return measured.isWall && keyOf_(measured.place) == key;
    }

    /// Goes along the surface the way on which the sides draw together, in steps as wide as samples
    /// are apart and then ever smaller ones, until the sides are parallel or the wall ends there.
    void follow(const Key& key, Best& best) {
        constexpr int kMostSteps = 24;
        constexpr double kParallel = 1e-4, kSmallest = 1e-3;
        const double widest = separateOf(best.place().faces[0]).step();
        double step = widest;
        for (int i = 0; i < kMostSteps && step > widest * kSmallest; ++i) {
            const Vector way = probe_.closing(best.sample, best.measured.normal);
            if (length(way) < kParallel) return;
            if (const Bvh::Hit hit = probe_.beside(best.sample, unit(way) * step)) {
                const Sample sample = samples_.at(hit.triangle, hit.point);
                const Measured next = measure_(sample);
                if (isOf(key, next) && next.place.value < best.place().value) {
                    best = {next, sample};
                    continue;
                }
            }
            step /= 2;
        }
    }

    const Probe& probe_;
    const Samples& samples_;
    KeyOf keyOf_;
    Measure measure_;
    std::map<Key, Best> best_;
    std::map<int, std::vector<Spot>> spots_;  // by face
    std::map<int, Separate> separate_;
};

}  // namespace corvane::part::walls
