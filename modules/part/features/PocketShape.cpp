#include <cmath>

#include "../Vec.h"
#include "Pockets.h"

namespace corvane::part::features {
namespace {

constexpr double kCeiling = 45.0;
constexpr double kWhole = 359.0;
constexpr double kSlotEnd = 179.0;  // a wall that turns by half faces itself

class Measurer {
public:
    Measurer(const Topology& topology, const Fillets& fillets, const PocketBody& body)
        : topology_(topology), fillets_(fillets), model_(topology.model()), body_(body) {}

    std::optional<Pocket> measure() {
        const Face& first = model_.face(body_.floor > 0 ? body_.floor : body_.walls.front());
        pocket_.solid = first.solid;
        pocket_.floor = body_.floor;
        pocket_.axis = -body_.up;
        pocket_.open = body_.open;
        pocket_.point = first.point;
        measureHeights();
        if (hasCeiling() || !measureRing()) return std::nullopt;
        if (!(pocket_.width > 0.0)) measureWidth();
        if (pocket_.open && !facing_) return std::nullopt;
        measureCorners();
        for (const auto* faces : {&body_.floors, &body_.walls, &body_.roundings})
            pocket_.faces.insert(pocket_.faces.end(), faces->begin(), faces->end());
        std::sort(pocket_.faces.begin(), pocket_.faces.end());
        pocket_.faces.erase(std::unique(pocket_.faces.begin(), pocket_.faces.end()),
                            pocket_.faces.end());
        if (!(pocket_.depth > topology_.near())) return std::nullopt;
        return pocket_;
    }

private:
    [[nodiscard]] bool isWall(int face) const {
        return std::binary_search(body_.walls.begin(), body_.walls.end(), face);
    }

    /// Whether something closes the hollow above a wall.
    [[nodiscard]] bool hasCeiling() const {
        for (const int wall : body_.walls)
            for (const int number : topology_.edgesOf(wall)) {
                const int other = topology_.across(number, wall);
                if (other > 0 && model_.edge(number).convexity == Convexity::Concave &&
                    model_.face(other).surface.kind == SurfaceKind::Plane &&
                    angleBetween(model_.face(other).normal, body_.up) > 180.0 - kCeiling)
                    return true;
            }
        return false;
    }

    /// A wall ends at its rim, above the rounding that follows it there.
    [[nodiscard]] Range withRim(int wall) const {
        const Range own = topology_.rangeOf(wall, body_.up);
        Range range = own;
        for (const int number : topology_.edgesOf(wall)) {
            const int other = topology_.across(number, wall);
            if (other == 0 || isWall(other) || !(fillets_.radius(other) > 0.0) ||
                fillets_.concave(other) || model_.edge(number).convexity != Convexity::Smooth)
                continue;
            const Range rim = topology_.rangeOf(other, body_.up);
            if (rim.low >= own.high - topology_.near()) range.add(rim);
        }
        return range;
    }

    void measureHeights() {
        double lowest = kNone, tallest = -kNone, bottom = kNone;
        for (const int wall : body_.walls) {
            const Range range = withRim(wall);
            bottom = std::min(bottom, range.low);
            lowest = std::min(lowest, range.high);
            tallest = std::max(tallest, range.high);
        }
        const double level =
            body_.floor > 0 ? dot(model_.face(body_.floor).point, body_.up) : bottom;
        pocket_.depth = lowest - level;
        pocket_.tallestWall = tallest - level;
    }

    [[nodiscard]] Range reach(const Vector& direction) const {
        Range range;
        for (const auto* faces : {&body_.floors, &body_.walls})
            for (const int face : *faces)
                range.add(topology_.rangeOf(face, direction));
        return range;
    }

    /// A wall all around is a ring groove's, whose width is to the pin in it; without a pin it is a
    /// round hole's or a void's, and no pocket.
    bool measureRing() {
        for (const int number : body_.walls) {
            const Face& wall = model_.face(number);
            if (!wall.concave || wall.turn < kWhole) continue;
            const Surface& s = wall.surface;
            for (const int other : body_.walls) {
                const Face& pin = model_.face(other);
                if (!pin.concave && topology_.onAxis(pin.surface, s.origin, s.axis))
                    pocket_.width = s.radius - pin.surface.radius;
            }
            if (!(pocket_.width > 0.0)) return false;
        }
        return true;
    }

    void measureWidth() {
        double least = kNone;
        Vector across;
        for (std::size_t i = 0; i < body_.walls.size(); ++i) {
            const Face& a = model_.face(body_.walls[i]);
            if (a.surface.kind == SurfaceKind::Cylinder && a.concave && a.turn >= kSlotEnd)
                least = std::min(least, 2.0 * a.surface.radius);
            if (a.surface.kind != SurfaceKind::Plane) continue;
            for (std::size_t k = i + 1; k < body_.walls.size(); ++k) {
                const Face& b = model_.face(body_.walls[k]);
                const double apart = distanceBetween(a, b);
                if (apart >= kNone) continue;
                facing_ = true;
                if (length(across) > 0.0 && apart >= least) continue;
                least = std::min(least, apart);
                across = a.normal;
            }
        }
        if (least >= kNone) return;
        pocket_.width = least;
        if (length(across) > 0.0) pocket_.length = reach(cross(body_.up, across)).length();
    }

    /// Between two flat walls that face each other somewhere; else kNone.
    [[nodiscard]] double distanceBetween(const Face& a, const Face& b) const {
        if (b.surface.kind != SurfaceKind::Plane ||
            !(angleBetween(a.normal, b.normal) >= 180.0 - topology_.slack()))
            return kNone;
        const double apart = dot(b.point - a.point, a.normal);
        const Vector side = unit(cross(a.normal, body_.up));
        const Range ra = topology_.rangeOf(a.number, side), rb = topology_.rangeOf(b.number, side);
        const bool overlap =
            std::min(ra.high, rb.high) - std::max(ra.low, rb.low) > topology_.near();
        return apart > topology_.near() && overlap ? apart : kNone;
    }

    void measureCorners() {
        double floorRadius = body_.roundings.empty() || body_.squareFloor ? 0.0 : kNone;
        for (const int face : body_.roundings)
            floorRadius = std::min(floorRadius, fillets_.radius(face));
        pocket_.floorRadius = floorRadius;
        for (const int wall : body_.walls) {
            const Face& face = model_.face(wall);
            const bool corner = face.concave && (fillets_.radius(wall) > 0.0 ||
                                                 (face.surface.kind == SurfaceKind::Cylinder &&
                                                  face.turn >= kSlotEnd && face.turn < kWhole));
            if (corner) pocket_.cornerRadius = std::min(pocket_.cornerRadius, face.surface.radius);
            for (const int number : topology_.edgesOf(wall))
                if (model_.edge(number).convexity == Convexity::Concave &&
                    isWall(topology_.across(number, wall)))
                    pocket_.sharpCorner = true;
        }
        if (pocket_.sharpCorner) pocket_.cornerRadius = 0.0;
    }

    const Topology& topology_;
    const Fillets& fillets_;
    const Model& model_;
    const PocketBody& body_;
    Pocket pocket_;
    bool facing_ = false;
};

}  // namespace

std::optional<Pocket> measurePocket(const Topology& topology, const Fillets& fillets,
                                    const PocketBody& body) {
    return Measurer(topology, fillets, body).measure();
}

}  // namespace corvane::part::features
