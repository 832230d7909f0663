#include "Separate.h"

#include <map>

#include "../reading/MeshTopology.h"

namespace corvane::part::walls {
namespace {

using Cell = std::array<std::int64_t, 3>;

constexpr double kThicker = 1.2;
/// A cell holds a few spots, so that even ones leave no hole between them.
constexpr double kSpotsAcross = 1.2;
constexpr int kMostDoublings = 8;

/// A place comes before what only lies between.
bool isThinner(const Spot& a, const Spot& b) {
    return a.isWall != b.isWall ? a.isWall : a.value < b.value;
}

/// Cells by their places, each with its number.
class Cells {
public:
    void add(const Cell& cell, std::uint32_t number) { numbers_.emplace(cell, number); }
    template <typename Use>
    void eachBeside(const Cell& cell, Use use) const {
        for (std::int64_t x = -1; x <= 1; ++x)
            for (std::int64_t y = -1; y <= 1; ++y)
                for (std::int64_t z = -1; z <= 1; ++z) {
                    const auto it = numbers_.find({cell[0] + x, cell[1] + y, cell[2] + z});
                    if (it != numbers_.end()) use(it->second);
                }
    }

private:
    std::map<Cell, std::uint32_t> numbers_;
};

}  // namespace

Separate::Separate(const std::vector<Spot>& spots) : spots_(spots) {
    Box box;
    for (const Spot& spot : spots)
        add(box, spot.point);
    low_ = box.least;
    const double size = diagonal(box);
    if (spots.size() < 3 || !(size > 0.0) || !std::isfinite(size)) return;
    step_ = kSpotsAcross * size / std::sqrt(static_cast<double>(spots.size()));
    for (int i = 0; i < kMostDoublings && !isConnected(); ++i)
        step_ *= 2.0;
}

Separate::Cell Separate::cellOf(const Vector& point) const {
    const Vector at = (point - low_) * (1.0 / step_);
    return {std::llround(std::floor(at.x)), std::llround(std::floor(at.y)),
            std::llround(std::floor(at.z))};
}

/// Spots that lie apart for want of others between them tell nothing of a wall between them.
bool Separate::isConnected() const {
    std::map<Cell, std::uint32_t> numbers;
    Cells cells;
    for (const Spot& spot : spots_) {
        const Cell cell = cellOf(spot.point);
        if (const auto [it, added] = numbers.emplace(cell, numbers.size()); added)
            cells.add(cell, it->second);
    }
    reading::Groups groups(numbers.size());
    for (const auto& [cell, number] : numbers)
        cells.eachBeside(cell,
                         [&, number = number](std::uint32_t other) { groups.join(number, other); });
    std::vector<std::uint32_t> groupOf;
    return groups.number(groupOf) == 1;
}

/// Each cell with its thinnest spot, thinnest first; of equal ones that at `first`.
std::vector<Separate::Thin> Separate::cellsOf(int across, const Vector& first) const {
    std::map<Cell, const Spot*> thinnest;
    for (const Spot& spot : spots_) {
        if (!(spot.value > 0.0) || (across > 0 && spot.across != across)) continue;
        const auto [it, added] = thinnest.emplace(cellOf(spot.point), &spot);
        if (!added && isThinner(spot, *it->second)) it->second = &spot;
    }
    std::vector<Thin> all;
    all.reserve(thinnest.size());
    for (const auto& [cell, spot] : thinnest)
        all.push_back({spot->value, cell, spot});
    const Cell start = cellOf(first);
    std::stable_sort(all.begin(), all.end(), [&](const Thin& l, const Thin& r) {
        return l.value != r.value ? l.value < r.value : l.cell == start && r.cell != start;
    });
    return all;
}

namespace {

/// Groups of cells that grow as cells are taken from thin to thick.
class Basins {
public:
    explicit Basins(std::size_t cells) : groups_(cells), lows_(cells), places_(cells, kNone) {}

    void begin(std::uint32_t cell, const Spot& spot) {
        lows_[cell] = spot.value;
        places_[cell] = spot.isWall ? cell : kNone;
    }
    /// Two groups meet at a cell of that value. A group whose own place is thinner by enough leaves
    /// it behind.
    void meet(std::uint32_t a, std::uint32_t b, double value, std::vector<std::uint32_t>& left) {
        a = groups_.find(a);
        b = groups_.find(b);
        if (a == b) return;
        if (std::pair(lows_[b], places_[b]) < std::pair(lows_[a], places_[a])) std::swap(a, b);
        const std::uint32_t elder = places_[a], younger = places_[b];
        const double low = lows_[a];
        const bool apart = value >= kThicker * lows_[b];
        if (apart && elder != kNone && younger != kNone) left.push_back(younger);
        groups_.join(a, b);
        const std::uint32_t group = groups_.find(a);
        lows_[group] = low;
        places_[group] = elder != kNone ? elder : younger;
    }
    void end(std::vector<std::uint32_t>& left) {
        for (std::uint32_t cell = 0; cell < places_.size(); ++cell)
            if (groups_.find(cell) == cell && places_[cell] != kNone) left.push_back(places_[cell]);
    }

private:
    static constexpr std::uint32_t kNone = 0xffffffffU;
    reading::Groups groups_;
    std::vector<double> lows_;
    std::vector<std::uint32_t> places_;
};

}  // namespace

std::vector<Spot> Separate::further(int across, const Vector& thinnest) const {
    std::vector<Spot> places;
    if (!(step_ > 0.0)) return places;
    const std::vector<Thin> all = cellsOf(across, thinnest);
    Cells taken;
    Basins basins(all.size());
    std::vector<std::uint32_t> left;
    for (std::uint32_t i = 0; i < all.size(); ++i) {
        basins.begin(i, *all[i].spot);
        taken.eachBeside(all[i].cell,
                         [&](std::uint32_t other) { basins.meet(i, other, all[i].value, left); });
        taken.add(all[i].cell, i);
    }
    basins.end(left);
    std::sort(left.begin(), left.end());
    for (const std::uint32_t cell : left)
        if (all[cell].cell != cellOf(thinnest)) places.push_back(*all[cell].spot);
    return places;
}

}  // namespace corvane::part::walls
