#include "DelaunayMesh.h"

#include <algorithm>
#include <deque>

namespace corvane::part::reading {
namespace {

__extension__ using Wide = __int128;

/// The number of the corner after the one.
std::size_t after(std::size_t i) {
    return i == 2 ? 0 : i + 1;
}
std::size_t before(std::size_t i) {
    return i == 0 ? 2 : i - 1;
}

}  // namespace

DelaunayMesh::DelaunayMesh(const std::vector<GridPoint>& points) : points_(points) {
    const auto count = static_cast<std::uint32_t>(points.size());
    // A triangle around the whole grid, which all others divide.
    points_.push_back({-kGrid, -kGrid});
    points_.push_back({4 * kGrid, -kGrid});
    points_.push_back({-kGrid, 4 * kGrid});
    at_.assign(points_.size(), 0);
    triangles_.reserve(2 * points_.size());
    triangles_.push_back({{count, count + 1, count + 2}});
    for (std::uint32_t point = 0; point < count; ++point)
        insert(point);
}

/// 1 where a way from a over b to c turns left, -1 where it turns right, 0 where it is straight.
int DelaunayMesh::turn(std::uint32_t a, std::uint32_t b, std::uint32_t c) const {
    const GridPoint &p = points_[a], &q = points_[b], &r = points_[c];
    const std::int64_t area = (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
    return area > 0 ? 1 : area < 0 ? -1 : 0;
}

bool DelaunayMesh::isInCircle(const Corners& circle, std::uint32_t point) const {
    const GridPoint& zero = points_[point];
    std::array<std::int64_t, 3> x{}, y{}, square{};
    for (std::size_t i = 0; i < 3; ++i) {
        x[i] = points_[circle[i]].x - zero.x;
        y[i] = points_[circle[i]].y - zero.y;
        square[i] = x[i] * x[i] + y[i] * y[i];
    }
    const auto part = [&](std::size_t i, std::size_t j, std::size_t k) {
        return static_cast<Wide>(square[i]) * (x[j] * y[k] - x[k] * y[j]);
    };
    return part(0, 1, 2) + part(1, 2, 0) + part(2, 0, 1) > 0;
}

/// Whether the point is on the straight line between two others.
bool DelaunayMesh::isBetween(std::uint32_t from, std::uint32_t point, std::uint32_t to) const {
    const GridPoint &p = points_[from], &q = points_[point], &r = points_[to];
    return turn(from, point, to) == 0 && (q.x - p.x) * (r.x - p.x) + (q.y - p.y) * (r.y - p.y) > 0;
}

std::size_t DelaunayMesh::cornerOf(std::uint32_t triangle, std::uint32_t point) const {
    const Corners& corners = triangles_[triangle].corners;
    return corners[0] == point ? 0 : corners[1] == point ? 1 : 2;
}

/// The same side, seen from the triangle across.
DelaunayMesh::Side DelaunayMesh::opposite(const Side& side) const {
    const Triangle& triangle = triangles_[side.triangle];
    const std::uint32_t across = triangle.across[side.side];
    if (across == kNone) return {};
    return {across, after(cornerOf(across, triangle.corners[after(side.side)]))};
}

/// Whether the two triangles of a side form a figure without a hollow or straight corner.
bool DelaunayMesh::isConvex(const Side& side) const {
    const Side other = opposite(side);
    if (other.triangle == kNone) return false;
    const Corners& corners = triangles_[side.triangle].corners;
    const std::uint32_t a = corners[side.side], b = corners[after(side.side)],
                        c = corners[before(side.side)],
                        d = triangles_[other.triangle].corners[other.side];
    return turn(a, b, d) > 0 && turn(a, d, c) > 0;
}

/// The triangle that holds the point, inside or on its border.
std::uint32_t DelaunayMesh::find(std::uint32_t point) const {
    std::uint32_t at = last_;
    for (bool moved = true; moved;) {
        moved = false;
        const Triangle& triangle = triangles_[at];
        for (std::size_t i = 0; i < 3 && !moved; ++i) {
            if (turn(triangle.corners[after(i)], triangle.corners[before(i)], point) >= 0) continue;
            at = triangle.across[i];
            moved = true;
        }
    }
    return at;
}

void DelaunayMesh::link(const Side& side, const Side& other, std::uint8_t borders) {
    Triangle& triangle = triangles_[side.triangle];
    triangle.across[side.side] = other.triangle;
    triangle.borders[side.side] = borders;
    if (other.triangle == kNone) return;
    triangles_[other.triangle].across[other.side] = side.triangle;
    triangles_[other.triangle].borders[other.side] = borders;
}

/// Makes triangles from the point to the sides of a ring around it, whose own triangles give way.
void DelaunayMesh::fan(std::uint32_t point, const std::vector<Rim>& ring,
                       std::vector<std::uint32_t> triangles) {
    while (triangles.size() < ring.size()) {
        triangles.push_back(static_cast<std::uint32_t>(triangles_.size()));
        triangles_.emplace_back();
    }
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const std::size_t next = i + 1 < ring.size() ? i + 1 : 0;
        triangles_[triangles[i]].corners = {point, ring[i].corner, ring[next].corner};
        link({triangles[i], 0}, ring[i].outside, 0);
        at_[ring[i].corner] = triangles[i];
        doubtful_.push_back({triangles[i], 0});
    }
    for (std::size_t i = 0; i < ring.size(); ++i)
        link({triangles[i], 1}, {triangles[i + 1 < ring.size() ? i + 1 : 0], 2}, 0);
    at_[point] = triangles[0];
    last_ = triangles[0];
}

void DelaunayMesh::insert(std::uint32_t point) {
    const std::uint32_t triangle = find(point);
    const Corners corners = triangles_[triangle].corners;
    std::vector<Rim> ring;
    std::vector<std::uint32_t> old{triangle};
    for (std::size_t i = 0; i < 3; ++i) {
        const Side side{triangle, before(i)};
        ring.push_back({corners[i], opposite(side)});
        if (turn(corners[i], corners[after(i)], point) != 0) continue;
        // On a side: the triangle across opens too.
        const Side other = opposite(side);
        old.push_back(other.triangle);
        ring.back().outside = opposite({other.triangle, after(other.side)});
        ring.push_back({triangles_[other.triangle].corners[other.side],
                        opposite({other.triangle, before(other.side)})});
    }
    fan(point, ring, std::move(old));
    makeDelaunay();
}

/// Replaces the side by the other diagonal of its two triangles.
void DelaunayMesh::flip(const Side& side) {
    const Side other = opposite(side);
    const std::uint32_t t = side.triangle, o = other.triangle;
    const Triangle mine = triangles_[t], theirs = triangles_[o];
    const std::uint32_t a = mine.corners[side.side], b = mine.corners[after(side.side)],
                        c = mine.corners[before(side.side)], d = theirs.corners[other.side];
    const Side ab = opposite({t, before(side.side)}), ca = opposite({t, after(side.side)});
    const Side bd = opposite({o, after(other.side)}), dc = opposite({o, before(other.side)});
    triangles_[t].corners = {a, b, d};
    triangles_[o].corners = {a, d, c};
    link({t, 0}, bd, theirs.borders[after(other.side)]);
    link({t, 2}, ab, mine.borders[before(side.side)]);
    link({o, 0}, dc, theirs.borders[before(other.side)]);
    link({o, 1}, ca, mine.borders[after(side.side)]);
    link({t, 1}, {o, 2}, 0);
    at_[a] = at_[b] = at_[d] = t;
    at_[c] = o;
}

void DelaunayMesh::makeDelaunay() {
    while (!doubtful_.empty()) {
        const Side side = doubtful_.back();
        doubtful_.pop_back();
        const Side other = opposite(side);
        if (other.triangle == kNone || triangles_[side.triangle].borders[side.side] != 0) continue;
        const std::uint32_t far = triangles_[other.triangle].corners[other.side];
        if (!isInCircle(triangles_[side.triangle].corners, far)) continue;
        flip(side);
        for (const Side& next : {Side{side.triangle, 0}, Side{side.triangle, 2},
                                 Side{other.triangle, 0}, Side{other.triangle, 1}})
            doubtful_.push_back(next);
    }
}

/// The side from one point to another, in the triangle to its left; none if there is none.
DelaunayMesh::Side DelaunayMesh::sideBetween(std::uint32_t from, std::uint32_t to) const {
    // Only the triangles round a corner of the outermost one do not close around it.
    if (from + 3 >= points_.size()) {
        const Side side = sideBetween(to, from);
        return side.triangle == kNone ? side : opposite(side);
    }
    std::uint32_t at = at_[from];
    do {
        const std::size_t corner = cornerOf(at, from);
        if (triangles_[at].corners[after(corner)] == to) return {at, before(corner)};
        at = triangles_[at].across[after(corner)];
    } while (at != at_[from] && at != kNone);
    return {};
}

/// The side across which, or the corner over which, a straight way leaves a point.
DelaunayMesh::Side DelaunayMesh::sideTowards(std::uint32_t from, std::uint32_t to) const {
    std::uint32_t at = at_[from];
    do {
        const std::size_t corner = cornerOf(at, from);
        const std::uint32_t right = triangles_[at].corners[after(corner)],
                            left = triangles_[at].corners[before(corner)];
        if (isBetween(from, right, to)) return {at, before(corner)};
        if (turn(from, right, to) > 0 && turn(from, left, to) < 0) return {at, corner};
        at = triangles_[at].across[after(corner)];
    } while (at != at_[from] && at != kNone);
    return {};
}

/// The first point on the way, `to` or one before it, and the sides that the way there crosses;
/// kNone if one is a border.
std::uint32_t DelaunayMesh::walk(std::uint32_t from, std::uint32_t to,
                                 std::deque<Line>& crossed) const {
    Side side = sideTowards(from, to);
    if (side.triangle == kNone) return kNone;
    const Corners& first = triangles_[side.triangle].corners;
    if (first[side.side] != from) return first[before(side.side)];
    while (true) {
        const Triangle& triangle = triangles_[side.triangle];
        if (triangle.borders[side.side] != 0) return kNone;
        crossed.push_back(
            {triangle.corners[after(side.side)], triangle.corners[before(side.side)]});
        const Side other = opposite(side);
        if (other.triangle == kNone) return kNone;
        const std::uint32_t next = triangles_[other.triangle].corners[other.side];
        const int where = turn(from, to, next);
        if (where == 0) return next;
        side = {other.triangle, where > 0 ? after(other.side) : before(other.side)};
    }
}

/// Flips the crossed sides until none crosses the way any more (Sloan, 1993).
bool DelaunayMesh::force(std::uint32_t from, std::uint32_t to, std::deque<Line> crossed) {
    std::vector<Line> made;
    std::size_t left = 100 + 4 * crossed.size() * crossed.size();
    while (!crossed.empty()) {
        if (left-- == 0) return false;
        const Line line = crossed.front();
        crossed.pop_front();
        const Side side = sideBetween(line[0], line[1]);
        if (side.triangle == kNone) return false;
        if (!isConvex(side)) {
            crossed.push_back(line);
            continue;
        }
        flip(side);
        const Corners& corners = triangles_[side.triangle].corners;
        const Line diagonal{corners[0], corners[2]};
        const bool crosses = turn(from, to, diagonal[0]) * turn(from, to, diagonal[1]) < 0;
        if (crosses)
            crossed.push_back(diagonal);
        else
            made.push_back(diagonal);
    }
    for (const Line& line : made)
        if (const Side side = sideBetween(line[0], line[1]); side.triangle != kNone)
            doubtful_.push_back(side);
    return true;
}

bool DelaunayMesh::addBorder(std::uint32_t from, std::uint32_t to) {
    while (from != to) {
        std::deque<Line> crossed;
        const std::uint32_t next = walk(from, to, crossed);
        if (next == kNone) return false;
        if (!crossed.empty() && !force(from, next, std::move(crossed))) return false;
        const Side side = sideBetween(from, next);
        if (side.triangle == kNone) return false;
        // The first bit counts, the second says that there is one.
        const int borders = (triangles_[side.triangle].borders[side.side] ^ 1) | 2;
        link(side, opposite(side), static_cast<std::uint8_t>(borders));
        makeDelaunay();
        from = next;
    }
    return true;
}

std::vector<Corners> DelaunayMesh::inside() const {
    const auto count = static_cast<std::uint32_t>(points_.size() - 3);
    enum : std::uint8_t { kNew, kOutside, kInside };
    std::vector<std::uint8_t> where(triangles_.size(), kNew);
    std::vector<std::uint32_t> open{at_[count]};
    where[at_[count]] = kOutside;
    std::vector<Corners> inside;
    while (!open.empty()) {
        const std::uint32_t at = open.back();
        open.pop_back();
        const Triangle& triangle = triangles_[at];
        if (where[at] == kInside) inside.push_back(triangle.corners);
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t across = triangle.across[i];
            if (across == kNone || where[across] != kNew) continue;
            const bool changes = (triangle.borders[i] & 1) != 0;
            where[across] = (where[at] == kInside) != changes ? kInside : kOutside;
            open.push_back(across);
        }
    }
    return inside;
}

}  // namespace corvane::part::reading
