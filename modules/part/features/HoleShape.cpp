#include <cmath>

#include "../../database/collector/seed/Threads.h"
#include "../Vec.h"
#include "HoleEnds.h"
#include "Holes.h"

namespace corvane::part::features {
namespace {

using Kind = HoleSection::Kind;

constexpr double kWidestTaper = 60.0;    // whole angles, degrees: a wider cone is a countersink
constexpr double kNarrowestSink = 30.0;  // a narrower one a taper
constexpr double kNarrowestDrillTip = 110.0;  // drills have tips of 118 degrees and more

std::string tapDrillFor(double diameter, double tolerance) {
    for (const collector::seed::Thread& thread : collector::seed::kCoarseThreads) {
        if (std::abs(thread.tapDrill - diameter) > tolerance) continue;
        std::string text = std::to_string(thread.nominal);
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
        return "M" + text;
    }
    return {};
}

class Shaper {
public:
    Shaper(const Topology& topology, const Surroundings& around, const HoleGroup& group)
        : topology_(topology), around_(around), model_(topology.model()) {
        const Face* widest = nullptr;
        for (const int number : group.round) {
            const Face& face = model_.face(number);
            if (!isHoleWall(topology, number)) continue;
            const bool better =
                widest == nullptr ||
                (face.surface.kind == SurfaceKind::Cylinder) >
                    (widest->surface.kind == SurfaceKind::Cylinder) ||
                (face.surface.kind == widest->surface.kind && face.area > widest->area);
            if (better) widest = &face;
        }
        body_.axis = widest->surface.axis;
        body_.origin = widest->surface.origin;
        body_.faces = group.round;
        body_.faces.insert(body_.faces.end(), group.steps.begin(), group.steps.end());
        std::sort(body_.faces.begin(), body_.faces.end());
        body_.pieces = piecesOf(topology, group.round, body_.axis);
        for (const HolePiece& piece : body_.pieces)
            body_.whole.add(piece.range);
        hole_.solid = body_.solid = widest->solid;
    }

    std::optional<Hole> shape() {
        if (!(body_.whole.length() > topology_.near()) || !findMain()) return std::nullopt;
        const HoleEnd low = endOf(topology_, around_, body_, -1.0);
        const HoleEnd high = endOf(topology_, around_, body_, 1.0);
        if (!low.open && !high.open) return std::nullopt;
        const bool fromLow = low.open && (!high.open || entersBetter(low, high));
        mouth_ = fromLow ? low : high;
        bottom_ = fromLow ? high : low;
        sign_ = fromLow ? 1.0 : -1.0;
        if (!bottom_.open && (bottom_.core || isPit())) return std::nullopt;
        describeMouth();
        describeMain();
        describeBottom();
        describeSteps();
        addSections();
        hole_.faces = body_.faces;
        return hole_;
    }

private:
    /// The narrowest cylinder or slender taper that goes around far enough, else the narrowest
    /// cone.
    bool findMain() {
        for (const bool slender : {true, false}) {
            for (const HolePiece& piece : body_.pieces) {
                const bool taper = piece.kind == Kind::Cone && piece.leastRadius() > 0.0 &&
                                   2.0 * piece.surface.halfAngle <= kNarrowestSink;
                const bool fits = slender ? piece.kind == Kind::Cylinder || taper
                                          : piece.kind == Kind::Cone && piece.concave;
                if (!fits || (main_ != nullptr && !isNarrower(piece))) continue;
                const double turn = topology_.turnOf(piece.faces, body_.origin, body_.axis);
                if (turn <= kLeastTurn) continue;
                main_ = &piece;
                hole_.turn = turn;
            }
            if (main_ != nullptr) return true;
        }
        return false;
    }
    [[nodiscard]] bool isNarrower(const HolePiece& piece) const {
        const double less = main_->leastRadius() - piece.leastRadius();
        if (std::abs(less) > topology_.near()) return less > 0.0;
        return piece.kind == Kind::Cylinder && main_->kind == Kind::Cone;
    }

    /// A through hole is entered at its wider, freer, squarer end.
    [[nodiscard]] bool entersBetter(const HoleEnd& a, const HoleEnd& b) const {
        if (std::abs(a.radius - b.radius) > topology_.near()) return a.radius > b.radius;
        if (std::abs(a.free - b.free) > topology_.near()) return a.free > b.free;
        if (a.square != b.square) return a.square;
        if (std::abs(a.area - b.area) > 1e-6 * (a.area + b.area)) return a.area > b.area;
        return a.face < b.face;
    }

    [[nodiscard]] bool isPit() const {
        return main_->kind == Kind::Cone && 2.0 * main_->surface.halfAngle > kWidestTaper;
    }

    /// Millimetres below the mouth.
    [[nodiscard]] double below(double place) const { return (place - mouth_.place) * sign_; }
    [[nodiscard]] double startOf(const HolePiece& piece) const {
        return below(sign_ > 0.0 ? piece.range.low : piece.range.high);
    }
    [[nodiscard]] double endOfPiece(const HolePiece& piece) const {
        return below(sign_ > 0.0 ? piece.range.high : piece.range.low);
    }
    [[nodiscard]] double startRadius(const HolePiece& piece) const {
        return piece.radiusAt(sign_ > 0.0 ? piece.range.low : piece.range.high);
    }
    [[nodiscard]] double endRadius(const HolePiece& piece) const {
        return piece.radiusAt(sign_ > 0.0 ? piece.range.high : piece.range.low);
    }

    void describeMouth() {
        hole_.axis = body_.axis * sign_;
        hole_.entry = body_.origin + body_.axis * (mouth_.place - dot(body_.origin, body_.axis));
        hole_.squareEntry = mouth_.square;
        hole_.entryAngle = mouth_.angle;
        hole_.entryFace = mouth_.face;
        hole_.freeLength = mouth_.free;
    }

    void describeMain() {
        hole_.diameter = 2.0 * main_->leastRadius();
        if (!(hole_.diameter > topology_.near()))  // a pit with a tip
            hole_.diameter = 2.0 * std::max(main_->radiusAt(main_->range.low),
                                            main_->radiusAt(main_->range.high));
        hole_.boreDepth = main_->range.length();
        if (main_->kind == Kind::Cone) {
            if (2.0 * main_->surface.halfAngle > kWidestTaper)
                hole_.boreDepth = 0.0;
            else
                hole_.taperAngle = 2.0 * main_->surface.halfAngle;
        }
        hole_.tapDrillFor = tapDrillFor(hole_.diameter, model_.isMesh ? 0.02 : 0.001);
    }

    void describeBottom() {
        const double whole = body_.whole.length();
        hole_.depth = whole;
        if (bottom_.open) {
            hole_.squareExit = bottom_.square;
            return;
        }
        const HolePiece* last = bottom_.piece;
        const bool tip = last->kind == Kind::Cone && last != main_ &&
                         2.0 * last->surface.halfAngle >= kWidestTaper;
        if (tip) {
            hole_.bottom = HoleBottom::Conical;
            hole_.bottomAngle = 2.0 * last->surface.halfAngle;
            hole_.depth = startOf(*last);
        } else if (last->kind == Kind::Sphere) {
            hole_.bottom = HoleBottom::Round;
            hole_.bottomRadius = last->surface.radius;
            hole_.depth = startOf(*last);
        } else if (bottom_.flat) {
            hole_.bottom = HoleBottom::Flat;
            if (last->kind == Kind::Rounding) hole_.bottomRadius = last->surface.minorRadius;
        } else if (bottom_.floors.empty() && last->kind == Kind::Cone) {
            hole_.bottom = HoleBottom::Conical;
            hole_.bottomAngle = 2.0 * last->surface.halfAngle;
        } else {
            hole_.bottom = HoleBottom::Other;
        }
        addFloors();
    }

    /// The floors that lie within the hole belong to it.
    void addFloors() {
        const double most = kPi * bottom_.radius * bottom_.radius * 1.001;
        for (const int floor : bottom_.floors)
            if (!bottom_.flat || model_.face(floor).area <= most) body_.faces.push_back(floor);
        std::sort(body_.faces.begin(), body_.faces.end());
        body_.faces.erase(std::unique(body_.faces.begin(), body_.faces.end()), body_.faces.end());
    }

    /// A drill's tip above the main bore is the floor of a wider bore and no countersink.
    [[nodiscard]] bool isDrillFloor(const HolePiece& cone) const {
        if (2.0 * cone.surface.halfAngle < kNarrowestDrillTip) return false;
        for (const HolePiece& piece : body_.pieces)
            if (piece.kind == Kind::Cylinder &&
                std::abs(endOfPiece(piece) - startOf(cone)) <= topology_.near() &&
                std::abs(endRadius(piece) - startRadius(cone)) <= topology_.near())
                return true;
        return false;
    }

    void describeSteps() {
        const double start = main_->kind == Kind::Cone && hole_.boreDepth == 0.0
                                 ? endOfPiece(*main_)
                                 : startOf(*main_);
        double boreStart = kNone, sinkStart = kNone;
        for (const HolePiece& piece : body_.pieces) {
            if (!piece.concave || endOfPiece(piece) > start + topology_.near()) continue;
            const double from = startOf(piece);
            if (piece.kind == Kind::Cylinder && &piece != main_ && from < boreStart) {
                boreStart = from;
                hole_.counterboreDiameter = 2.0 * piece.surface.radius;
                hole_.counterboreDepth = endOfPiece(piece);
            }
            const double angle = 2.0 * piece.surface.halfAngle;
            if (piece.kind == Kind::Cone && angle > kNarrowestSink && from < sinkStart &&
                startRadius(piece) > endRadius(piece) && !isDrillFloor(piece)) {
                sinkStart = from;
                hole_.countersinkDiameter = 2.0 * startRadius(piece);
                hole_.countersinkAngle = angle;
            }
        }
    }

    void addSections() {
        for (const HolePiece& piece : body_.pieces) {
            HoleSection section{piece.kind,
                                startOf(piece),
                                piece.range.length(),
                                2.0 * startRadius(piece),
                                2.0 * endRadius(piece),
                                piece.kind == Kind::Cone ? 2.0 * piece.surface.halfAngle : 0.0,
                                topology_.turnOf(piece.faces, body_.origin, body_.axis),
                                piece.faces};
            hole_.sections.push_back(std::move(section));
        }
        std::stable_sort(
            hole_.sections.begin(), hole_.sections.end(),
            [](const HoleSection& l, const HoleSection& r) { return l.start < r.start; });
    }

    const Topology& topology_;
    const Surroundings& around_;
    const Model& model_;
    HoleBody body_;
    HoleEnd mouth_, bottom_;
    const HolePiece* main_ = nullptr;
    double sign_ = 1.0;  // of the direction into the material along the body's axis
    Hole hole_;
};

}  // namespace

std::optional<Hole> shapeHole(const Topology& topology, const Surroundings& around,
                              const HoleGroup& group) {
    return Shaper(topology, around, group).shape();
}

}  // namespace corvane::part::features
