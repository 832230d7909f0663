#include "Fillets.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "../Vec.h"
#include "../reading/MeshTopology.h"

namespace corvane::part::features {
namespace {

constexpr double kMostTurn = 179.0;  // a half turn is a slot's end
constexpr double kAlike = 0.01;      // radii of freeform roundings that count as one

class Finder {
public:
    explicit Finder(const Topology& topology)
        : topology_(topology), model_(topology.model()), surfaces_(model_.faces.size()) {}

    Fillets find() {
        found_.radiusOf.assign(model_.faces.size(), 0.0);
        for (const Face& face : model_.faces)
            found_.concaveOf.push_back(face.concave);
        joinSplitFaces();
        for (const auto& [root, faces] : members(surfaces_))
            if (isStrip(faces)) mark(faces, strip_);
        std::vector<std::pair<int, int>> corners;
        for (const Face& face : model_.faces)
            if (const int strip = stripAtCorner(face)) corners.emplace_back(face.number, strip);
        for (const auto& [corner, strip] : corners) {
            mark({corner}, found_.radius(strip));
            found_.concaveOf[static_cast<std::size_t>(corner - 1)] = found_.concave(strip);
        }
        for (const Rounding& rounding : model_.roundings)
            addFreeform(rounding);
        collect();
        return found_;
    }

private:
    using Members = std::map<std::uint32_t, std::vector<int>>;

    Members members(reading::Groups& groups) {
        Members all;
        for (const Face& face : model_.faces)
            if (topology_.sound(face.number))
                all[groups.find(static_cast<std::uint32_t>(face.number - 1))].push_back(
                    face.number);
        return all;
    }
    static void join(reading::Groups& groups, const Edge& edge) {
        groups.join(static_cast<std::uint32_t>(edge.faces[0] - 1),
                    static_cast<std::uint32_t>(edge.faces[1] - 1));
    }
    [[nodiscard]] bool isSmooth(const Edge& edge) const {
        return edge.convexity == Convexity::Smooth && edge.faces[0] > 0 && edge.faces[1] > 0 &&
               topology_.sound(edge.faces[0]) && topology_.sound(edge.faces[1]);
    }

    /// Faces of one cylinder or torus that lie edge to edge count as one.
    void joinSplitFaces() {
        for (const Edge& edge : model_.edges) {
            if (!isSmooth(edge)) continue;
            const Face &a = model_.face(edge.faces[0]), &b = model_.face(edge.faces[1]);
            const Surface &s = a.surface, &t = b.surface;
            const bool same = s.kind == t.kind && a.concave == b.concave &&
                              (s.kind == SurfaceKind::Cylinder || s.kind == SurfaceKind::Torus) &&
                              std::abs(s.radius - t.radius) <= topology_.near() &&
                              std::abs(s.minorRadius - t.minorRadius) <= topology_.near() &&
                              topology_.onAxis(t, s.origin, s.axis);
            if (same) join(surfaces_, edge);
        }
    }

    /// Whether the faces of one surface are tangent to others along both sides; keeps the radius.
    bool isStrip(const std::vector<int>& faces) {
        const Face& first = model_.face(faces.front());
        const Surface& s = first.surface;
        if (s.kind == SurfaceKind::Cylinder) {
            strip_ = s.radius;
            return topology_.turnOf(faces, s.origin, s.axis) < kMostTurn && tangentSides(faces);
        }
        strip_ = s.minorRadius;
        return s.kind == SurfaceKind::Torus && tangentRings(faces);
    }

    [[nodiscard]] std::vector<const Edge*> smoothBorder(const std::vector<int>& faces) const {
        std::vector<const Edge*> border;
        for (const int face : faces)
            for (const int number : topology_.edgesOf(face)) {
                const Edge& edge = model_.edge(number);
                if (isSmooth(edge) && !edge.points.empty() &&
                    !std::binary_search(faces.begin(), faces.end(), topology_.across(number, face)))
                    border.push_back(&edge);
            }
        return border;
    }

    /// A cylinder with a tangent edge along its axis on both sides.
    [[nodiscard]] bool tangentSides(const std::vector<int>& faces) const {
        const Surface& s = model_.face(faces.front()).surface;
        Vector middle;
        for (const int face : faces)
            for (const int number : topology_.edgesOf(face))
                for (const Vector& p : model_.edge(number).points)
                    middle = middle + (p - ontoLine(p, s.origin, s.axis));
        bool left = false, right = false;
        for (const Edge* edge : smoothBorder(faces)) {
            const Vector along = edge->points.back() - edge->points.front();
            if (edge->kind != CurveKind::Line || !topology_.parallel(unit(along), s.axis)) continue;
            const double side = dot(cross(s.axis, middle), edge->points.front() - s.origin);
            left = left || side > 0.0;
            right = right || side < 0.0;
        }
        return left && right;
    }

    /// A torus with two tangent edges around its axis, at different places of its tube.
    [[nodiscard]] bool tangentRings(const std::vector<int>& faces) const {
        const Surface& s = model_.face(faces.front()).surface;
        bool any = false;
        double place = 0.0, out = 0.0;
        for (const Edge* edge : smoothBorder(faces)) {
            if (edge->kind != CurveKind::Circle || !topology_.parallel(edge->axis, s.axis) ||
                distanceToLine(edge->centre, s.origin, s.axis) > topology_.near())
                continue;
            const double edgePlace = dot(edge->centre - s.origin, s.axis);
            if (any && std::hypot(edgePlace - place, edge->radius - out) > topology_.near())
                return true;
            any = true;
            place = edgePlace;
            out = edge->radius;
        }
        return false;
    }

    /// One of the roundings of one radius that meet at a corner: a ball's part, or a freeform
    /// patch, which some programs write for a torus that turns more tightly than its tube. 0 for
    /// others.
    [[nodiscard]] int stripAtCorner(const Face& face) const {
        const SurfaceKind kind = face.surface.kind;
        if ((kind != SurfaceKind::Sphere && kind != SurfaceKind::Other) ||
            !topology_.sound(face.number))
            return 0;
        std::vector<int> strips;
        for (const int number : topology_.edgesOf(face.number)) {
            const Edge& edge = model_.edge(number);
            const int other = topology_.across(number, face.number);
            if (!isSmooth(edge)) return 0;
            if (edge.kind == CurveKind::Circle && found_.radius(other) > 0.0 &&
                std::abs(edge.radius - found_.radius(other)) <= topology_.near())
                strips.push_back(other);
        }
        for (std::size_t i = 1; i < strips.size(); ++i)
            for (std::size_t k = 0; k < i; ++k)
                if (std::abs(found_.radius(strips[i]) - found_.radius(strips[k])) <=
                    topology_.near())
                    return strips[k];
        return 0;
    }

    /// A freeform face that is tangent to others at both ends of its arcs.
    void addFreeform(const Rounding& rounding) {
        const auto at = static_cast<std::size_t>(rounding.face - 1);
        const auto isTangent = [&](const std::vector<int>& edges) {
            return std::any_of(edges.begin(), edges.end(), [&](int edge) {
                return isSmooth(model_.edge(edge)) &&
                       topology_.across(edge, rounding.face) != rounding.face;
            });
        };
        if (found_.radiusOf[at] > 0.0 || !topology_.sound(rounding.face) ||
            !(rounding.greatest < topology_.size()) || !isTangent(rounding.sides[0]) ||
            !isTangent(rounding.sides[1]))
            return;
        found_.radiusOf[at] = rounding.least;
        found_.concaveOf[at] = rounding.concave;
        freeform_[rounding.face] = &rounding;
    }
    [[nodiscard]] const Rounding* freeform(int face) const {
        const auto known = freeform_.find(face);
        return known == freeform_.end() ? nullptr : known->second;
    }
    [[nodiscard]] double largest(int face) const {
        const Rounding* known = freeform(face);
        return known ? known->greatest : found_.radius(face);
    }

    /// Whether a rounding runs on across the edge.
    [[nodiscard]] bool runsOn(const Edge& edge) const {
        const auto [a, b] = edge.faces;
        double slack = topology_.near();
        for (const int face : edge.faces) {
            if (!(found_.radius(face) > 0.0)) return false;
            const Rounding* known = freeform(face);
            if (!known) continue;
            slack = std::max(slack, kAlike * known->greatest);
            for (const auto& side : known->sides)
                if (std::find(side.begin(), side.end(), edge.number) != side.end()) return false;
        }
        return found_.concave(a) == found_.concave(b) && found_.radius(a) <= largest(b) + slack &&
               found_.radius(b) <= largest(a) + slack;
    }

    void mark(const std::vector<int>& faces, double radius) {
        for (const int face : faces)
            found_.radiusOf[static_cast<std::size_t>(face - 1)] = radius;
    }

    void collect() {
        reading::Groups chains(model_.faces.size());
        for (const Edge& edge : model_.edges)
            if (isSmooth(edge) && runsOn(edge)) join(chains, edge);
        for (const auto& [root, faces] : members(chains)) {
            if (!(found_.radius(faces.front()) > 0.0)) continue;
            const Face& first = model_.face(faces.front());
            Fillet fillet;
            measureRadius(faces, fillet);
            fillet.concave = found_.concave(first.number);
            fillet.point = first.point;
            fillet.faces = faces;
            fillet.length = lengthOf(faces, fillet.axis);
            found_.all.push_back(std::move(fillet));
        }
    }

    /// Radii that are one but for how well freeform faces keep it are that of an exact face.
    void measureRadius(const std::vector<int>& faces, Fillet& fillet) const {
        double exact = 0.0;
        fillet.radius = found_.radius(faces.front());
        for (const int face : faces) {
            fillet.radius = std::min(fillet.radius, found_.radius(face));
            fillet.largestRadius = std::max(fillet.largestRadius, largest(face));
            if (exact == 0.0 && !freeform(face)) exact = found_.radius(face);
        }
        if (fillet.largestRadius - fillet.radius > kAlike * fillet.largestRadius) return;
        if (exact == 0.0) exact = (fillet.radius + fillet.largestRadius) / 2;
        fillet.radius = fillet.largestRadius = exact;
    }

    double lengthOf(const std::vector<int>& faces, Vector& axis) {
        std::map<std::uint32_t, std::vector<int>> pieces;
        for (const int face : faces)
            pieces[surfaces_.find(static_cast<std::uint32_t>(face - 1))].push_back(face);
        double sum = 0.0;
        for (const auto& [root, piece] : pieces) {
            const Surface& s = model_.face(piece.front()).surface;
            if (s.kind == SurfaceKind::Cylinder) {
                Range range;
                for (const int face : piece)
                    range.add(topology_.rangeOf(face, s.axis));
                sum += range.length();
                if (pieces.size() == 1) axis = s.axis;
            } else if (s.kind == SurfaceKind::Torus) {
                sum += s.radius * radians(topology_.turnOf(piece, s.origin, s.axis));
            } else {
                for (const int face : piece)
                    if (const Rounding* known = freeform(face)) sum += known->length;
            }
        }
        return sum;
    }

    const Topology& topology_;
    const Model& model_;
    reading::Groups surfaces_;
    double strip_ = 0.0;
    std::map<int, const Rounding*> freeform_;  // by face
    Fillets found_;
};

}  // namespace

Fillets findFillets(const Topology& topology) {
    return Finder(topology).find();
}

}  // namespace corvane::part::features
