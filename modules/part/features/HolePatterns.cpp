#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "../Vec.h"
#include "Holes.h"

namespace corvane::part::features {
namespace {

using Members = std::vector<const Hole*>;

bool equal(const Topology& topology, const Hole& a, const Hole& b) {
    const double near = topology.near();
    if (a.solid != b.solid || a.bottom != b.bottom || a.sections.size() != b.sections.size())
        return false;
    if (!(angleBetween(a.axis, b.axis) <= topology.slack())) return false;
    if (std::abs(dot(a.entry - b.entry, a.axis)) > near) return false;
    for (std::size_t i = 0; i < a.sections.size(); ++i) {
        const HoleSection &s = a.sections[i], &t = b.sections[i];
        if (s.kind != t.kind || std::abs(s.startDiameter - t.startDiameter) > near ||
            std::abs(s.endDiameter - t.endDiameter) > near || std::abs(s.length - t.length) > near)
            return false;
    }
    return true;
}

/// Holes that may be equal share a key; rounding may part equal ones, so that neighbours count too.
std::vector<Members> equalHoles(const Topology& topology, const std::vector<Hole>& holes) {
    std::map<std::pair<long long, long long>, std::vector<std::size_t>> byKey;
    std::vector<Members> groups;
    const double cell = topology.near() * 4;
    for (const Hole& hole : holes) {
        const std::pair key{std::llround(hole.diameter / cell), std::llround(hole.depth / cell)};
        bool placed = false;
        for (int k = 0; k < 9 && !placed; ++k) {
            const auto found = byKey.find({key.first + k % 3 - 1, key.second + k / 3 - 1});
            if (found == byKey.end()) continue;
            for (const std::size_t group : found->second) {
                if (!equal(topology, *groups[group].front(), hole)) continue;
                groups[group].push_back(&hole);
                placed = true;
                break;
            }
        }
        if (placed) continue;
        byKey[key].push_back(groups.size());
        groups.push_back({&hole});
    }
    return groups;
}

/// The holes' places in the plane of their mouths.
struct Spot {
    double u, v;
};

class Pattern {
public:
    Pattern(const Topology& topology, const Axes& axes, const Members& members)
        : topology_(topology), axes_(axes), near_(3.0 * topology.near()) {
        const Vector axis = members.front()->axis;
        origin_ = members.front()->entry;
        x_ = squareTo(axis);
        for (const Hole* hole : members) {  // along the first other hole, so that rows lie flat
            const Vector along = hole->entry - origin_;
            const Vector flat = along - axis * dot(along, axis);
            if (length(flat) <= near_) continue;
            x_ = unit(flat);
            break;
        }
        y_ = cross(axis, x_);
        axis_ = axis;
        for (const Hole* hole : members)
            spots_.push_back({dot(hole->entry - origin_, x_), dot(hole->entry - origin_, y_)});
        result_.diameter = members.front()->diameter;
        for (const Hole* hole : members)
            result_.holes.push_back(hole->number);
    }

    HolePattern find() {
        if (spots_.size() == 2) {
            result_.pitch = distanceOf(spots_[0], spots_[1]);
            return result_;
        }
        if (tryRow() || tryCircle(false) || tryGrid() || tryCircle(true)) return result_;
        result_.pitch = leastDistance();
        return result_;
    }

private:
    static double distanceOf(const Spot& a, const Spot& b) {
        return std::hypot(a.u - b.u, a.v - b.v);
    }

    [[nodiscard]] double leastDistance() const {
        std::vector<Spot> sorted = spots_;
        std::sort(sorted.begin(), sorted.end(),
                  [](const Spot& a, const Spot& b) { return a.u < b.u; });
        double least = kNone;
        for (std::size_t i = 0; i < sorted.size(); ++i)
            for (std::size_t k = i + 1; k < sorted.size() && sorted[k].u - sorted[i].u < least; ++k)
                least = std::min(least, distanceOf(sorted[i], sorted[k]));
        return least;
    }

    bool tryRow() {
        std::vector<double> places;
        for (const Spot& spot : spots_) {
            if (std::abs(spot.v) > near_) return false;
            places.push_back(spot.u);
        }
        std::sort(places.begin(), places.end());
        const double pitch =
            (places.back() - places.front()) / static_cast<double>(places.size() - 1);
        for (std::size_t i = 0; i < places.size(); ++i)
            if (std::abs(places[i] - places[0] - pitch * static_cast<double>(i)) > near_)
                return false;
        result_.kind = PatternKind::Row;
        result_.pitch = pitch;
        return true;
    }

    /// The circle through three holes, if all others are on it.
    [[nodiscard]] std::optional<std::pair<Spot, double>> circle() const {
        const Spot &b = spots_[1], &c = spots_[2];  // the first one is at the origin
        const double d = 2.0 * (b.u * c.v - b.v * c.u);
        if (std::abs(d) <= near_ * near_) return std::nullopt;
        const double bb = b.u * b.u + b.v * b.v, cc = c.u * c.u + c.v * c.v;
        const Spot centre{(c.v * bb - b.v * cc) / d, (b.u * cc - c.u * bb) / d};
        const double radius = std::hypot(centre.u, centre.v);
        for (const Spot& spot : spots_)
            if (std::abs(distanceOf(spot, centre) - radius) > near_) return std::nullopt;
        return std::pair{centre, radius};
    }

    /// A square is a circle too, which `square` admits; a round face in its middle decides.
    bool tryCircle(bool square) {
        const auto found = circle();
        if (!found) return false;
        const auto& [centre, radius] = *found;
        std::vector<double> angles;
        for (const Spot& spot : spots_)
            angles.push_back(degrees(std::atan2(spot.v - centre.v, spot.u - centre.u)));
        std::sort(angles.begin(), angles.end());
        std::vector<double> gaps;
        for (std::size_t i = 0; i < angles.size(); ++i)
            gaps.push_back(i + 1 < angles.size() ? angles[i + 1] - angles[i]
                                                 : angles[0] + 360.0 - angles.back());
        std::sort(gaps.begin(), gaps.end());  // the widest may be where the circle stays open
        const double slack = degrees(near_ / radius);
        if (gaps[gaps.size() - 2] - gaps[0] > 2.0 * slack) return false;
        const bool closes = gaps.back() - gaps[0] <= 2.0 * slack;
        // Any three holes of a triangle lie on some circle.
        if (!closes && spots_.size() < 4) return false;
        if (!square && spots_.size() == 4 && !hasMiddle(centre)) return false;
        result_.kind = PatternKind::Circle;
        result_.circleDiameter = 2.0 * radius;
        result_.pitch = 2.0 * radius * std::sin(radians(gaps[0]) / 2);
        return true;
    }

    [[nodiscard]] bool hasMiddle(const Spot& centre) const {
        const Vector middle = origin_ + x_ * centre.u + y_ * centre.v;
        for (const Face& face : topology_.model().faces)
            if (axes_.of(face.number) >= 0 && topology_.onAxis(face.surface, middle, axis_))
                return true;
        return false;
    }

    /// Every place of a rectangle's lattice holds one hole.
    bool tryGrid() {
        const std::size_t count = spots_.size();
        if (count < 4) return false;
        // One side runs to a nearest neighbour of the first hole.
        std::size_t nearest = 1;
        for (std::size_t i = 2; i < count; ++i)
            if (distanceOf(spots_[0], spots_[i]) < distanceOf(spots_[0], spots_[nearest]))
                nearest = i;
        const double size = distanceOf(spots_[0], spots_[nearest]);
        const double cu = spots_[nearest].u / size, cv = spots_[nearest].v / size;
        std::vector<double> us, vs;
        for (Spot& spot : spots_) {
            us.push_back(spot.u * cu + spot.v * cv);
            vs.push_back(spot.v * cu - spot.u * cv);
        }
        const std::vector<double> columns = levels(us), rows = levels(vs);
        if (columns.size() < 2 || rows.size() < 2 || columns.size() * rows.size() != count)
            return false;
        const double a = pitchOf(columns), b = pitchOf(rows);
        if (a <= 0.0 || b <= 0.0) return false;
        result_.kind = PatternKind::Grid;
        result_.pitch = std::min(a, b);
        result_.secondPitch = std::max(a, b);
        return true;
    }
    [[nodiscard]] std::vector<double> levels(std::vector<double> values) const {
        std::sort(values.begin(), values.end());
        std::vector<double> kept;
        for (const double value : values)
            if (kept.empty() || value - kept.back() > near_) kept.push_back(value);
        return kept;
    }
    /// The step between equally spaced levels; 0 if the steps differ.
    [[nodiscard]] double pitchOf(const std::vector<double>& sorted) const {
        const double pitch =
            (sorted.back() - sorted.front()) / static_cast<double>(sorted.size() - 1);
        for (std::size_t i = 1; i < sorted.size(); ++i)
            if (std::abs(sorted[i] - sorted[i - 1] - pitch) > near_) return 0.0;
        return pitch;
    }

    const Topology& topology_;
    const Axes& axes_;
    double near_;
    Vector origin_, x_, y_, axis_;
    std::vector<Spot> spots_;
    HolePattern result_;
};

void findAligned(const Topology& topology, const Axes& axes, std::vector<Hole>& holes) {
    std::map<std::pair<int, int>, std::vector<std::size_t>> lines;
    for (std::size_t i = 0; i < holes.size(); ++i)
        for (const int face : holes[i].faces)
            if (axes.of(face) >= 0) {
                lines[{holes[i].solid, axes.of(face)}].push_back(i);
                break;
            }
    for (const auto& [line, members] : lines)
        for (const std::size_t a : members)
            for (const std::size_t b : members)
                if (a != b && std::abs(holes[a].diameter - holes[b].diameter) <= topology.near())
                    holes[a].aligned.push_back(holes[b].number);
}

}  // namespace

std::vector<HolePattern> findPatterns(const Topology& topology, const Axes& axes,
                                      std::vector<Hole>& holes) {
    findAligned(topology, axes, holes);
    std::vector<HolePattern> patterns;
    for (const Members& members : equalHoles(topology, holes)) {
        if (members.size() < 2) continue;
        HolePattern pattern = Pattern(topology, axes, members).find();
        pattern.number = static_cast<int>(patterns.size()) + 1;
        for (const int hole : pattern.holes)
            holes[static_cast<std::size_t>(hole - 1)].pattern = pattern.number;
        patterns.push_back(std::move(pattern));
    }
    return patterns;
}

}  // namespace corvane::part::features
