#include "HolePieces.h"

#include <cmath>

#include "../Vec.h"

namespace corvane::part::features {
namespace {

using Kind = HoleSection::Kind;

HolePiece pieceOf(const Topology& topology, int number, const Vector& axis) {
    const Face& face = topology.model().face(number);
    HolePiece piece;
    piece.surface = face.surface;
    piece.concave = face.concave;
    piece.level = dot(face.surface.origin, axis);
    piece.faces = {number};
    piece.range = topology.rangeOf(number, axis);
    switch (face.surface.kind) {
        case SurfaceKind::Cone:
            piece.kind = Kind::Cone;
            piece.slope = std::tan(radians(face.surface.halfAngle)) *
                          (dot(face.surface.axis, axis) < 0.0 ? -1.0 : 1.0);
            break;
        case SurfaceKind::Sphere:
            piece.kind = Kind::Sphere;
            break;
        case SurfaceKind::Torus:
            piece.kind = Kind::Rounding;
            break;
        default:
            break;
    }
    // A tip without an edge to it.
    if (piece.range.length() > topology.near()) return piece;
    const bool up = dot(face.point, axis) > piece.range.middle();
    if (piece.kind == Kind::Cone && piece.slope != 0.0) {
        const double tip = piece.level - piece.surface.radius / piece.slope;
        piece.range.add({tip, tip});
    } else if (piece.kind == Kind::Sphere) {
        const double pole = piece.level + (up ? 1.0 : -1.0) * piece.surface.radius;
        piece.range.add({pole, pole});
    }
    return piece;
}

bool sameSurface(const Topology& topology, const HolePiece& a, const HolePiece& b) {
    const double near = topology.near();
    if (a.kind != b.kind || a.concave != b.concave) return false;
    if (a.kind == Kind::Cylinder) return std::abs(a.surface.radius - b.surface.radius) <= near;
    if (a.kind == Kind::Cone)
        return std::abs(a.surface.halfAngle - b.surface.halfAngle) <= topology.slack() &&
               a.slope * b.slope > 0.0 &&
               std::abs(a.radiusAt(b.range.middle()) - b.radiusAt(b.range.middle())) <= 2 * near;
    return std::abs(a.level - b.level) <= near &&
           std::abs(a.surface.radius - b.surface.radius) <= near &&
           std::abs(a.surface.minorRadius - b.surface.minorRadius) <= near;
}

/// Counterbores at both ends are two pieces: the bore between them is narrower. So are a shaft's
/// seats with a collar or a groove between them.
bool apart(const Topology& topology, const HolePiece& a, const HolePiece& b,
           const std::vector<HolePiece>& all) {
    const Range gap{std::min(a.range.high, b.range.high), std::max(a.range.low, b.range.low)};
    if (gap.length() <= topology.near()) return false;
    return std::any_of(all.begin(), all.end(), [&](const HolePiece& piece) {
        const double wider = piece.leastRadius() - a.leastRadius();
        const bool other =
            piece.concave == a.concave &&
            (a.concave ? wider < -topology.near() : std::abs(wider) > topology.near());
        return other && piece.range.low < gap.high - topology.near() &&
               piece.range.high > gap.low + topology.near();
    });
}

}  // namespace

double HolePiece::radiusAt(double place) const {
    const double from = place - level;
    switch (kind) {
        case Kind::Cylinder:
            break;
        case Kind::Cone:
            return std::max(0.0, surface.radius + from * slope);
        case Kind::Sphere:
            return std::sqrt(std::max(0.0, surface.radius * surface.radius - from * from));
        case Kind::Rounding: {
            const double minor = surface.minorRadius;
            const double across = std::sqrt(std::max(0.0, minor * minor - from * from));
            return surface.radius + (concave ? across : -across);
        }
    }
    return surface.radius;
}

double HolePiece::leastRadius() const {
    return std::min(radiusAt(range.low), radiusAt(range.high));
}

std::vector<HolePiece> piecesOf(const Topology& topology, const std::vector<int>& faces,
                                const Vector& axis) {
    std::vector<HolePiece> single, pieces;
    for (const int face : faces)
        single.push_back(pieceOf(topology, face, axis));
    std::stable_sort(single.begin(), single.end(), [](const HolePiece& l, const HolePiece& r) {
        return l.range.low < r.range.low;
    });
    for (const HolePiece& next : single) {
        // They come along the axis: if the last such piece is apart, so are those before it.
        const auto same = std::find_if(pieces.rbegin(), pieces.rend(), [&](const HolePiece& piece) {
            return sameSurface(topology, piece, next);
        });
        if (same == pieces.rend() || apart(topology, *same, next, single)) {
            pieces.push_back(next);
        } else {
            same->range.add(next.range);
            same->faces.insert(same->faces.end(), next.faces.begin(), next.faces.end());
        }
    }
    for (HolePiece& piece : pieces)
        std::sort(piece.faces.begin(), piece.faces.end());
    return pieces;
}

}  // namespace corvane::part::features
