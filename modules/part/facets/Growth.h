#pragma once

#include <optional>

#include "Claims.h"

namespace corvane::part::facets {

/// What tells whether a strip lies on a surface.
struct Fit {
    Surface surface;
    bool concave = false;
    double tolerance = 0.0;  ///< of the vertices
    double turn = 0.0;       ///< cosine of the most between normals of a strip and of the surface
    double sag = 0.0;        ///< most between the middle of a strip and the surface
    double area = 0.0;       ///< or the area that they have at most
};

/// A smooth surface leaves the plane that touches it with the square of the way, and what touches
/// it best with the third power: within so many times the tolerance that holds so many times the
/// area and more. A face of a kind ends where something else begins, nearly as soon as before.
/// Known parts come out the same with half and with twice of each.
inline constexpr double kWider = 16.0, kMuchMore = 1.5;

/// Grows surfaces over strips that belong to no region yet.
class Grower {
public:
    explicit Grower(const Claims& claims);

    /// The surface of the kind that passes all strips of the seed, with all strips around them that
    /// it passes too; none if the seed is on no such surface.
    std::optional<Region> grow(SurfaceKind kind, std::span<const std::uint32_t> seed,
                               double tolerance);

    /// Adds to the region the strips around it that its surface passes within the tolerance.
    void widen(Region& region, double tolerance);

    /// What tells whether a strip is on the surface of the region within the tolerance.
    [[nodiscard]] Fit fitOf(const Region& region, double tolerance) const;
    /// Whether the fit passes the strip.
    [[nodiscard]] bool passes(const Fit& fit, std::uint32_t strip) const;

    /// Whether one surface of the kind of both passes the two regions about as well as their own
    /// do: the first has it then.
    bool joins(Region& region, const Region& other, double tolerance);

    /// Whether the region has so many vertices that it is no chance that its surface passes them,
    /// and at least so many times the numbers that the surface has.
    bool isProven(const Region& region, std::size_t times);

    /// Whether the surface only touches a smooth one of no kind: more tolerance lets it hold much
    /// more, or it has few strips and those around it are like them.
    bool isChance(const Region& region, double tolerance);

    [[nodiscard]] double areaOf(const Region& region) const;
    /// The area that tells of the region's surface: without its largest strip, which may be a flat
    /// face whose corners happen to be on it.
    [[nodiscard]] double supportOf(const Region& region) const;

private:
    std::optional<Fit> fitted(SurfaceKind kind, std::span<const std::uint32_t> seed,
                              double tolerance);
    [[nodiscard]] double cosineOf(const Fit& fit, std::uint32_t strip) const;
    [[nodiscard]] double sagOf(const Fit& fit, std::uint32_t strip) const;
    bool limitTurn(Fit& fit, std::span<const std::uint32_t> seed) const;
    void spread(const Fit& fit, Region& region, std::vector<std::uint32_t>& refused);
    void spreadAll(Fit& fit, Region& region);
    [[nodiscard]] bool isFlat(std::span<const std::uint32_t> strips, double tolerance) const;
    void collect(std::span<const std::uint32_t> strips);

    const Claims& claims_;
    const Strips& strips_;
    std::vector<std::uint32_t> seen_;  // the number of the last growth that met the strip
    std::uint32_t stamp_ = 0;
    std::vector<std::uint32_t> corners_;
    std::vector<Vector> points_;  // of what is fitted
};

}  // namespace corvane::part::facets
