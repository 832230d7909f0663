#pragma once

#include <vector>

#include "Samples.h"

namespace corvane::part::walls {

/// What was measured at a place of a face.
struct Spot {
    Vector point;
    double value = 0.0;   ///< 0 where nothing was
    bool isWall = false;  ///< else it is no place, but what lies between places
    std::uint32_t triangle = 0;
    int across = 0;  ///< the face on the other side
};

/// Finds the places of one face that are thin each for itself: between two of them the wall is
/// thicker than at either by a fifth, or there is none. Places nearer together than some steps from
/// spot to spot count as one.
class Separate {
public:
    explicit Separate(const std::vector<Spot>& spots);

    /// The thinnest spot of each place, thinnest first, but for that of the thinnest one, which is
    /// at `thinnest`. Only spots with the face `across` count; 0 stands for any.
    [[nodiscard]] std::vector<Spot> further(int across, const Vector& thinnest) const;
    /// Whether a wall of `between` on the way parts two places.
    [[nodiscard]] static bool parts(double between, double a, double b) {
        return between >= kThicker * std::max(a, b);
    }
    /// The width of a step.
    [[nodiscard]] double step() const { return step_; }

    static constexpr double kThicker = 1.2;

private:
    using Cell = std::uint64_t;  ///< its three places, 21 bits each
    struct Thin {
        double value;
        Cell cell;
        const Spot* spot;
    };
    [[nodiscard]] Cell cellOf(const Vector& point) const;
    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] std::vector<Thin> cellsOf(int across, const Vector& first) const;

    const std::vector<Spot>& spots_;
    Vector low_;
    double step_ = 0.0;
};

}  // namespace corvane::part::walls
