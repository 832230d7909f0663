#include "Turned.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "../Vec.h"
#include "HolePieces.h"

namespace corvane::part::features {
namespace {

constexpr double kLeastShare = 2.0 / 3.0;
constexpr double kRoundTurn = 300.0;   // degrees of the outermost face: a keyway may interrupt it
constexpr double kSectionTurn = 90.0;  // less is no section but what is left between flats

class Finder {
public:
    explicit Finder(const Topology& topology)
        : topology_(topology), model_(topology.model()), axes_(topology) {}

    Turned find() {
        if (model_.solids.size() != 1) return no("the part is not one solid");
        if (!chooseAxis()) return no("no face goes around an axis");
        if (!isRoundOutside()) return no("the outside is not round");
        if (found_.share < kLeastShare) return no("too little of the surface is around one axis");
        found_.is = true;
        direct();
        addSections();
        addGrooves();
        return found_;
    }

private:
    Turned no(const char* reason) {
        Turned none;
        none.reason = reason;
        none.share = found_.share;
        return none;
    }

    [[nodiscard]] bool isRing(const Edge& edge) const {
        return edge.kind == CurveKind::Circle && topology_.parallel(edge.axis, axis_) &&
               distanceToLine(edge.centre, origin_, axis_) <= topology_.near();
    }
    /// A flat face square to the axis with a border around it.
    [[nodiscard]] bool isEndFace(const Face& face) const {
        if (face.surface.kind != SurfaceKind::Plane || !topology_.parallel(face.normal, axis_))
            return false;
        const auto& edges = topology_.edgesOf(face.number);
        return std::any_of(edges.begin(), edges.end(),
                           [&](int edge) { return isRing(model_.edge(edge)); });
    }

    /// The axis with the most surface around it.
    bool chooseAxis() {
        std::vector<double> areas(axes_.count(), 0.0);
        std::vector<const Face*> firsts(axes_.count(), nullptr);
        double all = 0.0;
        for (const Face& face : model_.faces) {
            all += std::isfinite(face.area) ? face.area : 0.0;
            const int axis = axes_.of(face.number);
            if (axis < 0) continue;
            areas[static_cast<std::size_t>(axis)] += face.area;
            if (firsts[static_cast<std::size_t>(axis)] == nullptr)
                firsts[static_cast<std::size_t>(axis)] = &face;
        }
        if (areas.empty() || !(all > 0.0)) return false;
        const auto best =
            static_cast<std::size_t>(std::max_element(areas.begin(), areas.end()) - areas.begin());
        origin_ = firsts[best]->surface.origin;
        axis_ = firsts[best]->surface.axis;
        double around = 0.0;
        for (const Face& face : model_.faces) {
            if (!topology_.sound(face.number)) continue;
            const bool round = topology_.onAxis(face.surface, origin_, axis_);
            if (round) round_.push_back(face.number);
            if (round || isEndFace(face)) around += face.area;
        }
        found_.share = std::min(1.0, around / all);
        return true;
    }

    bool isRoundOutside() {
        double most = 0.0, round = 0.0;
        for (const Edge& edge : model_.edges)
            for (const Vector& p : edge.points)
                most = std::max(most, distanceToLine(p, origin_, axis_));
        for (const HolePiece& piece : piecesOf(topology_, round_, axis_)) {
            if (piece.concave) continue;
            double radius =
                std::max(piece.radiusAt(piece.range.low), piece.radiusAt(piece.range.high));
            if (piece.kind == HoleSection::Kind::Rounding)
                radius = piece.surface.radius + piece.surface.minorRadius;
            if (piece.kind == HoleSection::Kind::Sphere) radius = piece.surface.radius;
            if (topology_.turnOf(piece.faces, origin_, axis_) >= kRoundTurn)
                round = std::max(round, radius);
        }
        found_.diameter = 2.0 * round;
        return round > 0.0 && most <= round + topology_.near();
    }

    /// From the heavier end; of an even part from the end whose faces come first.
    void direct() {
        Range whole;
        for (const Edge& edge : model_.edges)
            whole.add(rangeAlong(model_, edge, axis_));
        // The pole of a ball end has no edge.
        for (const HolePiece& piece : piecesOf(topology_, round_, axis_))
            whole.add(piece.range);
        found_.length = whole.length();
        double lean = dot(model_.solids[0].centre, axis_) - whole.middle();
        if (std::abs(lean) <= topology_.near()) {
            for (const Face& face : model_.faces) {
                lean = dot(face.point, axis_) - whole.middle();
                if (std::abs(lean) > topology_.near()) break;
            }
        }
        if (lean > 0.0) {
            axis_ = -axis_;
            whole = {-whole.high, -whole.low};
        }
        start_ = whole.low;
        found_.axis = axis_;
        found_.origin = origin_ + axis_ * (start_ - dot(origin_, axis_));
        pieces_ = piecesOf(topology_, round_, axis_);
    }

    void addSections() {
        for (const HolePiece& piece : pieces_) {
            const bool straight =
                piece.kind == HoleSection::Kind::Cylinder || piece.kind == HoleSection::Kind::Cone;
            if (!straight || topology_.turnOf(piece.faces, origin_, axis_) < kSectionTurn) continue;
            TurnedSection section;
            section.inner = piece.concave;
            section.start = piece.range.low - start_;
            section.length = piece.range.length();
            section.startDiameter = 2.0 * piece.radiusAt(piece.range.low);
            section.endDiameter = 2.0 * piece.radiusAt(piece.range.high);
            section.taperAngle =
                piece.kind == HoleSection::Kind::Cone ? 2.0 * piece.surface.halfAngle : 0.0;
            section.faces = piece.faces;
            found_.sections.push_back(std::move(section));
        }
        std::stable_sort(found_.sections.begin(), found_.sections.end(),
                         [&](const TurnedSection& l, const TurnedSection& r) {
                             if (l.inner != r.inner) return r.inner;
                             return l.start < r.start - topology_.near();
                         });
    }

    /// The wall of a groove: a flat ring that faces it.
    struct Wall {
        int face = 0;
        double place = 0.0, rim = 0.0, corner = 0.0;  // rim: its radius away from the bottom
        int rounding = 0;
    };

    [[nodiscard]] std::optional<Wall> wallAt(int bottom, double side, bool inner) const {
        for (const int number : topology_.edgesOf(bottom)) {
            const Edge& edge = model_.edge(number);
            int wall = topology_.across(number, bottom), rounding = 0;
            if (wall == 0) continue;
            const Surface& s = model_.face(wall).surface;
            double corner = 0.0;
            if (s.kind == SurfaceKind::Torus && model_.face(wall).concave &&
                edge.convexity == Convexity::Smooth && topology_.onAxis(s, origin_, axis_)) {
                rounding = wall;
                corner = s.minorRadius;
                wall = flatBeside(rounding);
            } else if (edge.convexity != Convexity::Concave) {
                continue;
            }
            if (wall == 0) continue;
            const Face& face = model_.face(wall);
            if (!isEndFace(face) || dot(face.normal, axis_) * side > 0.0) continue;
            return Wall{wall, dot(face.point, axis_), rimOf(face, inner), corner, rounding};
        }
        return std::nullopt;
    }
    [[nodiscard]] int flatBeside(int rounding) const {
        for (const int number : topology_.edgesOf(rounding)) {
            const int other = topology_.across(number, rounding);
            if (other > 0 && isEndFace(model_.face(other))) return other;
        }
        return 0;
    }
    [[nodiscard]] double rimOf(const Face& face, bool inner) const {
        double rim = inner ? kNone : 0.0;
        for (const int number : topology_.edgesOf(face.number)) {
            const Edge& edge = model_.edge(number);
            if (isRing(edge)) rim = inner ? std::min(rim, edge.radius) : std::max(rim, edge.radius);
        }
        return rim;
    }

    void addGrooves() {
        for (const HolePiece& piece : pieces_) {
            if (piece.kind != HoleSection::Kind::Cylinder) continue;
            std::optional<Wall> low, high;
            for (const int face : piece.faces) {
                if (!low) low = wallAt(face, -1.0, piece.concave);
                if (!high) high = wallAt(face, 1.0, piece.concave);
            }
            if (!low || !high) continue;
            Groove groove;
            const double bottom = piece.surface.radius;
            groove.inner = piece.concave;
            groove.start = low->place - start_;
            groove.width = high->place - low->place;
            groove.diameter = 2.0 * bottom;
            groove.depth = piece.concave ? bottom - std::max(low->rim, high->rim)
                                         : std::min(low->rim, high->rim) - bottom;
            groove.cornerRadius = std::min(low->corner, high->corner);
            groove.point = model_.face(piece.faces.front()).point;
            if (!(groove.depth > topology_.near()) || groove.width > bottom) continue;
            std::set<int> faces(piece.faces.begin(), piece.faces.end());
            for (const int face : {low->face, high->face, low->rounding, high->rounding})
                if (face > 0) faces.insert(face);
            groove.faces.assign(faces.begin(), faces.end());
            found_.grooves.push_back(std::move(groove));
        }
        std::stable_sort(found_.grooves.begin(), found_.grooves.end(),
                         [](const Groove& l, const Groove& r) { return l.start < r.start; });
    }

    const Topology& topology_;
    const Model& model_;
    Axes axes_;
    Vector origin_, axis_;
    double start_ = 0.0;
    std::vector<int> round_;
    std::vector<HolePiece> pieces_;
    Turned found_;
};

}  // namespace

Turned findTurned(const Model& model) {
    const Topology topology(model);
    if (topology.usable()) return Finder(topology).find();
    Turned none;
    none.reason = "there is no shape";
    return none;
}

}  // namespace corvane::part::features
