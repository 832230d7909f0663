#include "Separate.h"

#include "../reading/MeshTopology.h"

namespace corvane::part::walls {
namespace {

/// A cell holds a few spots, so that even ones leave no hole between them.
constexpr double kSpotsAcross = 1.2;
constexpr int kMostDoublings = 8;

/// A place comes before what only lies between.
bool isThinner(const Spot& a, const Spot& b) {
    return a.isWall != b.isWall ? a.isWall : a.value < b.value;
}

constexpr std::uint64_t kAxis = 21;  // bits

/// Cells in the order of their places, so that one beside another is found by halving.
class Cells {
public:
    explicit Cells(std::vector<std::uint64_t> cells) : cells_(std::move(cells)) {
        std::sort(cells_.begin(), cells_.end());
        cells_.erase(std::unique(cells_.begin(), cells_.end()), cells_.end());
    }
    [[nodiscard]] std::size_t size() const { return cells_.size(); }
    [[nodiscard]] std::uint64_t operator[](std::size_t number) const { return cells_[number]; }
    [[nodiscard]] std::uint32_t number(std::uint64_t cell) const {
        return static_cast<std::uint32_t>(lower(cell) - cells_.begin());
    }
    /// Calls `use` with the numbers of the cells at most one place away in each direction.
    template <typename Use>
    void eachBeside(std::uint64_t cell, Use use) const {
        constexpr std::uint64_t kX = 1ULL << 2 * kAxis, kY = 1ULL << kAxis;
        for (const std::uint64_t x : {cell - kX, cell, cell + kX})
            for (const std::uint64_t row : {x - kY, x, x + kY})
                for (auto it = lower(row - 1); it != cells_.end() && *it <= row + 1; ++it)
                    use(static_cast<std::uint32_t>(it - cells_.begin()));
    }

private:
    [[nodiscard]] std::vector<std::uint64_t>::const_iterator lower(std::uint64_t cell) const {
        return std::lower_bound(cells_.begin(), cells_.end(), cell);
    }
    std::vector<std::uint64_t> cells_;
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

/// Places begin at 1, so that there is one before each. There are no more of them on the way across
/// all spots than the root of their number.
Separate::Cell Separate::cellOf(const Vector& point) const {
    const Vector at = (point - low_) * (1.0 / step_);
    Cell cell = 0;
    for (const double along : {at.x, at.y, at.z})
        cell = (cell << kAxis) + static_cast<Cell>(std::max(along, 0.0)) + 1;
    return cell;
}

/// Spots that lie apart for want of others between them tell nothing of a wall between them.
bool Separate::isConnected() const {
    std::vector<Cell> taken;
    taken.reserve(spots_.size());
    for (const Spot& spot : spots_)
        taken.push_back(cellOf(spot.point));
    const Cells cells(std::move(taken));
    reading::Groups groups(cells.size());
    for (std::uint32_t i = 0; i < cells.size(); ++i)
        cells.eachBeside(cells[i], [&](std::uint32_t other) { groups.join(i, other); });
    std::vector<std::uint32_t> groupOf;
    return groups.number(groupOf) == 1;
}

/// Each cell with its thinnest spot, thinnest first; of equal ones that at `first`.
std::vector<Separate::Thin> Separate::cellsOf(int across, const Vector& first) const {
    std::vector<Thin> all;
    for (const Spot& spot : spots_)
        if (spot.value > 0.0 && (across <= 0 || spot.across == across))
            all.push_back({spot.value, cellOf(spot.point), &spot});
    std::stable_sort(all.begin(), all.end(), [](const Thin& l, const Thin& r) {
        return l.cell != r.cell ? l.cell < r.cell : isThinner(*l.spot, *r.spot);
    });
    all.erase(std::unique(all.begin(), all.end(),
                          [](const Thin& l, const Thin& r) { return l.cell == r.cell; }),
              all.end());
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
        const bool apart = Separate::parts(value, low, lows_[b]);
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
    std::vector<Cell> taken;
    taken.reserve(all.size());
    for (const Thin& thin : all)
        taken.push_back(thin.cell);
    const Cells cells(std::move(taken));
    std::vector<std::uint32_t> turns(all.size());
    for (std::uint32_t i = 0; i < all.size(); ++i)
        turns[cells.number(all[i].cell)] = i;
    Basins basins(all.size());
    std::vector<std::uint32_t> left;
    for (std::uint32_t i = 0; i < all.size(); ++i) {
        basins.begin(i, *all[i].spot);
        cells.eachBeside(all[i].cell, [&](std::uint32_t other) {
            if (turns[other] < i) basins.meet(i, turns[other], all[i].value, left);
        });
    }
    basins.end(left);
    std::sort(left.begin(), left.end());
    for (const std::uint32_t cell : left)
        if (all[cell].cell != cellOf(thinnest)) places.push_back(*all[cell].spot);
    return places;
}

}  // namespace corvane::part::walls
