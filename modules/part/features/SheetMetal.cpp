#include "SheetMetal.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "../Vec.h"
#include "../reading/MeshTopology.h"

namespace corvane::part::features {
namespace {

constexpr double kHem = 179.0;

/// Where a bend goes over into a flat.
struct Tangent {
    std::size_t bend;  // place in the list
    int edge, flat;
};

class Finder {
public:
    Finder(const Topology& topology, const std::vector<Hole>& holes)
        : topology_(topology),
          model_(topology.model()),
          axes_(topology),
          sides_(topology),
          holes_(holes) {
        for (const Hole& hole : holes)
            inHole_.insert(hole.faces.begin(), hole.faces.end());
    }

    SheetMetal find() {
        if (model_.solids.size() != 1) return no("the part is not one solid");
        found_.thickness = Sheets(topology_, axes_).thickness();
        if (!(found_.thickness > 0.0)) return no("the part has no one small thickness");
        found_.is = true;
        addBends();
        addSharpBends();
        sortBends();
        for (std::size_t i = 0; i < found_.bends.size(); ++i)
            findTangents(i);
        measureFlanges();
        for (const Hole& hole : holes_)
            found_.holes.push_back(placeOf(hole));
        return found_;
    }

private:
    static SheetMetal no(const char* reason) {
        SheetMetal none;
        none.reason = reason;
        return none;
    }

    [[nodiscard]] bool isSide(const Face& face, bool concave) const {
        return face.surface.kind == SurfaceKind::Cylinder && face.concave == concave &&
               topology_.sound(face.number) && inHole_.count(face.number) == 0;
    }

    /// Convex cylinders around the axis with the radius that overlap the range along it.
    [[nodiscard]] std::vector<int> outerSides(int axis, double radius, const Vector& along,
                                              const Range& range) const {
        std::vector<int> faces;
        const auto at = outer_.find(axis);
        if (at == outer_.end()) return faces;
        for (const int number : at->second) {
            if (std::abs(model_.face(number).surface.radius - radius) > 2.0 * topology_.near())
                continue;
            const Range other = topology_.rangeOf(number, along);
            if (std::min(range.high, other.high) - std::max(range.low, other.low) >
                topology_.near())
                faces.push_back(number);
        }
        return faces;
    }

    void addBends() {
        reading::Groups groups(model_.faces.size());
        for (const Edge& edge : model_.edges) {
            const auto [a, b] = edge.faces;
            if (a == 0 || b == 0 || edge.convexity != Convexity::Smooth) continue;
            const Face &l = model_.face(a), &r = model_.face(b);
            if (isSide(l, true) && isSide(r, true) && axes_.of(a) == axes_.of(b) &&
                std::abs(l.surface.radius - r.surface.radius) <= topology_.near())
                groups.join(static_cast<std::uint32_t>(a - 1), static_cast<std::uint32_t>(b - 1));
        }
        std::map<std::uint32_t, std::vector<int>> inner;
        for (const Face& face : model_.faces) {
            if (isSide(face, true))
                inner[groups.find(static_cast<std::uint32_t>(face.number - 1))].push_back(
                    face.number);
            if (isSide(face, false)) outer_[axes_.of(face.number)].push_back(face.number);
        }
        for (const auto& [root, faces] : inner) {
            const Surface& s = model_.face(faces.front()).surface;
            Range range;
            for (const int face : faces)
                range.add(topology_.rangeOf(face, s.axis));
            const std::vector<int> outer =
                outerSides(axes_.of(faces.front()), s.radius + found_.thickness, s.axis, range);
            if (!outer.empty()) addBend(faces, outer, s, range);
        }
    }

    void addBend(const std::vector<int>& inner, const std::vector<int>& outer, const Surface& s,
                 const Range& range) {
        const auto& sides = inner.empty() ? outer : inner;
        Bend bend;
        bend.innerRadius = inner.empty() ? 0.0 : s.radius;
        bend.angle = topology_.turnOf(sides, s.origin, s.axis);
        // A whole turn is a tube's wall or a boss around a hole.
        if (bend.angle >= 359.0) return;
        bend.length = range.length();
        bend.axis = s.axis;
        bend.point = inner.empty() ? s.origin + s.axis * (range.middle() - dot(s.origin, s.axis))
                                   : model_.face(inner.front()).point;
        bend.closed = bend.angle >= kHem;
        bend.faces = inner;
        for (const int face : outer) {
            bend.faces.push_back(face);
            used_.insert(face);
        }
        std::sort(bend.faces.begin(), bend.faces.end());
        found_.bends.push_back(std::move(bend));
    }

    /// A bend without an inner radius: an outer side around a sharp inner corner.
    void addSharpBends() {
        std::map<int, std::vector<int>> sides;  // by axis
        for (const auto& [axis, faces] : outer_)
            for (const int face : faces)
                if (used_.count(face) == 0 && std::abs(model_.face(face).surface.radius -
                                                       found_.thickness) <= 2.0 * topology_.near())
                    sides[axis].push_back(face);
        if (sides.empty()) return;
        for (const Edge& edge : model_.edges) {
            if (edge.convexity != Convexity::Concave || edge.kind != CurveKind::Line) continue;
            for (const auto& [axis, faces] : sides) {
                const Surface& s = model_.face(faces.front()).surface;
                const Vector along = unit(edge.points.back() - edge.points.front());
                if (!topology_.parallel(along, s.axis) ||
                    distanceToLine(edge.points.front(), s.origin, s.axis) > topology_.near())
                    continue;
                const std::vector<int> outer =
                    outerSides(axis, found_.thickness, s.axis, rangeAlong(model_, edge, s.axis));
                if (!outer.empty()) addBend({}, outer, s, rangeAlong(model_, edge, s.axis));
                break;
            }
        }
    }

    void sortBends() {
        std::stable_sort(
            found_.bends.begin(), found_.bends.end(),
            [](const Bend& l, const Bend& r) { return l.faces.front() < r.faces.front(); });
    }

    void findTangents(std::size_t index) {
        const Bend& bend = found_.bends[index];
        for (const int face : bend.faces)
            for (const int number : topology_.edgesOf(face)) {
                const Edge& edge = model_.edge(number);
                const int flat = topology_.across(number, face);
                if (flat == 0 || edge.kind != CurveKind::Line ||
                    edge.convexity != Convexity::Smooth ||
                    model_.face(flat).surface.kind != SurfaceKind::Plane)
                    continue;
                tangents_.push_back({index, number, flat});
                tangentsOf_[flat].push_back(tangents_.size() - 1);
            }
    }

    /// The outside of a bend of up to 90 degrees is where the outer sides of its flats would meet;
    /// of a tighter one its own outermost place.
    void measureFlanges() {
        for (const Tangent& tangent : tangents_) {
            Bend& bend = found_.bends[tangent.bend];
            const Edge& edge = model_.edge(tangent.edge);
            const Face& flat = model_.face(tangent.flat);
            const Vector across = unit(cross(bend.axis, flat.normal));
            Range range;
            for (const int face : sides_.of(flat.number).faces)
                range.add(topology_.rangeOf(face, across));
            const double at = dot(edge.points.front(), across);
            const double reach = std::max(range.high - at, at - range.low);
            const double outer = bend.innerRadius + found_.thickness;
            const double setback = outer * std::tan(radians(std::min(bend.angle, 90.0)) / 2.0);
            bend.flangeLength = std::min(bend.flangeLength, reach + setback);
        }
    }

    [[nodiscard]] SheetHole placeOf(const Hole& hole) const {
        SheetHole place;
        place.hole = hole.number;
        std::set<int> flats, own;
        for (const int face : hole.faces)
            for (const int edge : topology_.edgesOf(face)) {
                const int other = topology_.across(edge, face);
                own.insert(edge);
                if (other > 0 && model_.face(other).surface.kind == SurfaceKind::Plane)
                    flats.insert(other);
            }
        const auto away = [&](int edge) {
            const double least = features::least(model_, model_.edge(edge), [&](const Vector& p) {
                                     return distanceToLine(p, hole.entry, hole.axis);
                                 }).value;
            return std::max(0.0, least - hole.diameter / 2);
        };
        for (const int flat : flats) {
            std::set<int> bends;
            const Side& side = sides_.of(flat);
            for (const int face : side.faces) {
                const auto at = tangentsOf_.find(face);
                if (at == tangentsOf_.end()) continue;
                for (const std::size_t index : at->second) {
                    const Tangent& tangent = tangents_[index];
                    bends.insert(tangent.edge);
                    const double distance = away(tangent.edge);
                    if (distance >= place.bendDistance) continue;
                    place.bendDistance = distance;
                    place.bend = static_cast<int>(tangent.bend) + 1;
                }
            }
            for (const int edge : side.border)
                if (bends.count(edge) == 0 && own.count(edge) == 0 &&
                    (side.faces.size() == 1 || !isMouth(edge)))
                    place.edgeDistance = std::min(place.edgeDistance, away(edge));
        }
        return place;
    }

    [[nodiscard]] bool isMouth(int edge) const {
        const auto& faces = model_.edge(edge).faces;
        return inHole_.count(faces[0]) > 0 || inHole_.count(faces[1]) > 0;
    }

    const Topology& topology_;
    const Model& model_;
    Axes axes_;
    Sides sides_;
    const std::vector<Hole>& holes_;
    std::set<int> inHole_, used_;
    std::map<int, std::vector<int>> outer_;  // outer sides by axis
    std::vector<Tangent> tangents_;
    std::map<int, std::vector<std::size_t>> tangentsOf_;  // by flat face
    SheetMetal found_;
};

}  // namespace

SheetMetal findSheetMetal(const Model& model, const std::vector<Hole>& holes) {
    const Topology topology(model);
    if (topology.usable()) return Finder(topology, holes).find();
    SheetMetal none;
    none.reason = "there is no shape";
    return none;
}

}  // namespace corvane::part::features
