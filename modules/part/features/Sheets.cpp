#include <algorithm>
#include <cmath>
#include <tuple>

#include "../Vec.h"
#include "SheetMetal.h"

namespace corvane::part::features {
namespace {

constexpr std::size_t kMostDirections = 200;  // a part with more is not bent of sheet
constexpr std::size_t kMostCandidates = 30;
constexpr double kVolumeSlack = 0.04;  // countersinks, embossings and rounded borders change it
constexpr double kThinness = 8.0;      // a side's size over the thickness

}  // namespace

Sheets::Sheets(const Topology& topology, const Axes& axes) : topology_(topology), axes_(axes) {
    for (const Face& face : topology.model().faces)
        if (topology.sound(face.number)) add(face);
    std::sort(flats_.begin(), flats_.end(), [](const Flat& l, const Flat& r) {
        return std::tie(l.direction, l.place, l.along) < std::tie(r.direction, r.place, r.along);
    });
    std::sort(rounds_.begin(), rounds_.end(), [](const Round& l, const Round& r) {
        return std::tie(l.axis, l.radius, l.concave) < std::tie(r.axis, r.radius, r.concave);
    });
}

void Sheets::add(const Face& face) {
    if (face.surface.kind == SurfaceKind::Cylinder) {
        rounds_.push_back({axes_.of(face.number), face.surface.radius, face.concave, face.area});
        return;
    }
    if (face.surface.kind != SurfaceKind::Plane) return;
    std::size_t i = 0;
    while (i < directions_.size() && !topology_.parallel(directions_[i], face.normal))
        ++i;
    if (i == directions_.size()) {
        if (i == kMostDirections) return;
        directions_.push_back(face.normal);
    }
    const Vector& direction = directions_[i];
    flats_.push_back({i, dot(face.point - topology_.centre(), direction),
                      dot(face.normal, direction) > 0.0, face.area});
}

/// Distances from the largest flat face to what is behind it, and between coaxial cylinders.
std::vector<double> Sheets::candidates() const {
    std::vector<double> all;
    const auto largest = std::max_element(
        flats_.begin(), flats_.end(), [](const Flat& l, const Flat& r) { return l.area < r.area; });
    if (largest != flats_.end())
        for (const Flat& flat : flats_) {
            const double behind = (largest->place - flat.place) * (largest->along ? 1.0 : -1.0);
            if (flat.direction == largest->direction && flat.along != largest->along &&
                behind > topology_.near())
                all.push_back(behind);
        }
    for (std::size_t i = 0; i + 1 < rounds_.size(); ++i) {
        const Round &a = rounds_[i], &b = rounds_[i + 1];
        if (a.axis == b.axis && a.concave && !b.concave && b.radius - a.radius > topology_.near())
            all.push_back(b.radius - a.radius);
    }
    std::sort(all.begin(), all.end());
    std::vector<double> kept;
    for (const double value : all)
        if (kept.empty() || value - kept.back() > topology_.near()) kept.push_back(value);
    if (kept.size() > kMostCandidates) kept.resize(kMostCandidates);
    return kept;
}

double Sheets::areaWithPartner(double thickness) const {
    double area = 0.0;
    const double near = 2.0 * topology_.near();
    for (const Flat& flat : flats_) {
        const double place = flat.place - (flat.along ? thickness : -thickness);
        auto at = std::lower_bound(
            flats_.begin(), flats_.end(), std::pair(flat.direction, place - near),
            [](const Flat& l, const std::pair<std::size_t, double>& r) {
                return std::tie(l.direction, l.place) < std::tie(r.first, r.second);
            });
        for (; at != flats_.end() && at->direction == flat.direction && at->place <= place + near;
             ++at)
            if (at->along != flat.along) {
                area += flat.area;
                break;
            }
    }
    for (const Round& round : rounds_) {
        const double radius = round.radius + (round.concave ? thickness : -thickness);
        // A sharp bend has its inner side in its axis.
        bool partner = !round.concave && std::abs(radius) <= near;
        auto at =
            std::lower_bound(rounds_.begin(), rounds_.end(), std::pair(round.axis, radius - near),
                             [](const Round& l, const std::pair<int, double>& r) {
                                 return std::tie(l.axis, l.radius) < std::tie(r.first, r.second);
                             });
        for (; at != rounds_.end() && at->axis == round.axis && at->radius <= radius + near; ++at)
            partner = partner || at->concave != round.concave;
        if (partner) area += round.area;
    }
    return area;
}

double Sheets::thickness() const {
    const double volume = topology_.model().solids[0].volume;
    double best = 0.0, bestMiss = kVolumeSlack;
    for (const double candidate : candidates()) {
        const double side = areaWithPartner(candidate) / 2.0;
        if (!(candidate * kThinness <= std::sqrt(side))) continue;
        const double miss = std::abs(side * candidate / volume - 1.0);
        if (!(miss < bestMiss)) continue;
        best = candidate;
        bestMiss = miss;
    }
    return best;
}

}  // namespace corvane::part::features
