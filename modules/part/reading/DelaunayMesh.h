#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <vector>

#include "Delaunay.h"

namespace corvane::part::reading {

/// A point with whole coordinates, so that each test on points is exact.
struct GridPoint {
    std::int64_t x = 0, y = 0;
};

/// The Delaunay triangles of points of a grid, into which borders can be forced.
class DelaunayMesh {
public:
    /// Coordinates are from 0 to this one. The products of the tests just fit into 128 bits.
    static constexpr std::int64_t kGrid = std::int64_t{1} << 28;

    /// No two points are at one place. It is fastest if each is near the one before.
    explicit DelaunayMesh(const std::vector<GridPoint>& points);

    /// Makes the line from one point to another a border between triangles; false if it crosses
    /// another border.
    bool addBorder(std::uint32_t from, std::uint32_t to);

    /// The triangles that an odd number of borders surrounds.
    [[nodiscard]] std::vector<Corners> inside() const;

private:
    static constexpr std::uint32_t kNone = 0xffffffffU;
    /// Side i is opposite corner i.
    struct Triangle {
        Corners corners;
        std::array<std::uint32_t, 3> across{kNone, kNone, kNone};
        std::array<std::uint8_t, 3> borders{};  // how often the side was made one
    };
    struct Side {
        std::uint32_t triangle = kNone;
        std::size_t side = 0;
    };

    /// A side of the ring around a new point: where it begins, and what is beyond it.
    struct Rim {
        std::uint32_t corner;
        Side outside;
    };
    using Line = std::array<std::uint32_t, 2>;

    [[nodiscard]] int turn(std::uint32_t a, std::uint32_t b, std::uint32_t c) const;
    [[nodiscard]] bool isInCircle(const Corners& circle, std::uint32_t point) const;
    [[nodiscard]] bool isConvex(const Side& side) const;
    [[nodiscard]] bool isBetween(std::uint32_t from, std::uint32_t point, std::uint32_t to) const;
    [[nodiscard]] std::size_t cornerOf(std::uint32_t triangle, std::uint32_t point) const;
    [[nodiscard]] Side opposite(const Side& side) const;
    [[nodiscard]] Side sideBetween(std::uint32_t from, std::uint32_t to) const;
    [[nodiscard]] Side sideTowards(std::uint32_t from, std::uint32_t to) const;
    [[nodiscard]] std::uint32_t find(std::uint32_t point) const;
    std::uint32_t walk(std::uint32_t from, std::uint32_t to, std::deque<Line>& crossed) const;
    void link(const Side& side, const Side& other, std::uint8_t borders);
    void fan(std::uint32_t point, const std::vector<Rim>& ring,
             std::vector<std::uint32_t> triangles);
    void insert(std::uint32_t point);
    void flip(const Side& side);
    void makeDelaunay();
    bool force(std::uint32_t from, std::uint32_t to, std::deque<Line> crossed);

    std::vector<GridPoint> points_;
    std::vector<Triangle> triangles_;
    std::vector<std::uint32_t> at_;  // a triangle at each point
    std::vector<Side> doubtful_;
    std::uint32_t last_ = 0;
};

}  // namespace corvane::part::reading
