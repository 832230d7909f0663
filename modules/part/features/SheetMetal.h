#pragma once

#include <vector>

#include "corvane/part/Features.h"

#include "Topology.h"

namespace corvane::part::features {

SheetMetal findSheetMetal(const Model& model, const std::vector<Hole>& holes);

/// The two sides of a sheet: planes and cylinders that have a partner at one distance behind them.
class Sheets {
public:
    Sheets(const Topology& topology, const Axes& axes);

    /// The distance that explains the volume of the solid best; 0 if none explains it.
    [[nodiscard]] double thickness() const;

private:
    struct Flat {
        std::size_t direction;
        double place;  // along the direction
        bool along;    // the normal is the direction, not its opposite
        double area;
    };
    struct Round {
        int axis;
        double radius;
        bool concave;
        double area;
    };
    void add(const Face& face);
    [[nodiscard]] std::vector<double> candidates() const;
    [[nodiscard]] double areaWithPartner(double thickness) const;

    const Topology& topology_;
    const Axes& axes_;
    std::vector<Vector> directions_;
    std::vector<Flat> flats_;    // sorted by direction and place
    std::vector<Round> rounds_;  // sorted by axis and radius
};

}  // namespace corvane::part::features
