#include <cmath>
#include <map>
#include <set>

#include "../Vec.h"
#include "Holes.h"

namespace corvane::part::features {
namespace {

/// A piece of a hole's wall as a bar of air.
struct Wall {
    int hole;
    Bar bar;
};

std::vector<Wall> wallsOf(const Hole& hole) {
    std::vector<Wall> walls;
    for (const HoleSection& section : hole.sections) {
        const bool straight = section.kind == HoleSection::Kind::Cylinder ||
                              (section.kind == HoleSection::Kind::Cone && hole.taperAngle > 0.0);
        if (!straight || !(section.length > 0.0)) continue;
        const double radius = std::max(section.startDiameter, section.endDiameter) / 2;
        walls.push_back(
            {hole.number,
             {hole.entry + hole.axis * section.start, hole.axis, section.length, radius}});
    }
    return walls;
}

/// The faces that the hole opens into, and its own; sorted.
std::vector<int> around(const Topology& topology, const Hole& hole) {
    std::set<int> faces(hole.faces.begin(), hole.faces.end());
    for (const int face : hole.faces)
        for (const int edge : topology.edgesOf(face))
            faces.insert(topology.across(edge, face));
    return {faces.begin(), faces.end()};
}

using Numbers = std::set<int>;

/// The mouth of another hole is an outer border only of a face that a seam through it cuts.
double edgeDistance(const Topology& topology, const Sides& sides, const Numbers& inHoles,
                    const Hole& hole) {
    if (hole.entryFace == 0 || hole.sections.empty()) return kNone;
    const Model& model = topology.model();
    const Side& side = sides.of(hole.entryFace);
    double best = kNone;
    Numbers own;
    for (const int number : hole.faces)
        own.insert(topology.edgesOf(number).begin(), topology.edgesOf(number).end());
    for (const int number : side.border) {
        const Edge& edge = model.edge(number);
        const bool isMouth = side.faces.size() > 1 &&
                             (inHoles.count(edge.faces[0]) > 0 || inHoles.count(edge.faces[1]) > 0);
        if (isMouth || own.count(number) > 0) continue;
        const auto measure = [&](const Vector& p) {
            return distanceToLine(p, hole.entry, hole.axis);
        };
        best = std::min(best, least(model, edge, measure).value);
    }
    double mouth = 0.0;
    for (const HoleSection& section : hole.sections)
        if (section.start <= topology.near()) mouth = std::max(mouth, section.startDiameter / 2);
    return best < kNone ? std::max(0.0, best - mouth) : kNone;
}

double wallDistance(const Topology& topology, const Surroundings& surroundings, const Hole& hole) {
    const std::vector<int> except = around(topology, hole);
    double best = kNone;
    for (const Wall& wall : wallsOf(hole))
        best = std::min(best, surroundings.beside(wall.bar, except, hole.solid));
    if (hole.bottom == HoleBottom::Through) return best;
    double deepest = 0.0;
    for (const HoleSection& section : hole.sections)
        deepest = std::max(deepest, section.start + section.length);
    const Bar down{hole.entry + hole.axis * deepest, hole.axis, 0.0, hole.diameter / 2};
    return std::min(best, surroundings.free(down, true, except, hole.solid));
}

/// Least distance between the sides of two bars.
double between(const Topology& topology, const Bar& a, const Bar& b) {
    const Vector w = a.origin - b.origin;
    const double c = dot(a.axis, b.axis), d = dot(a.axis, w), e = dot(b.axis, w);
    if (topology.parallel(a.axis, b.axis)) {
        // Side by side only where they overlap: else one is in another wall.
        const double from = -d, to = from + b.length * c;
        const bool overlap =
            std::min(from, to) < a.length - topology.near() && std::max(from, to) > topology.near();
        return overlap ? distanceToLine(b.origin, a.origin, a.axis) - a.radius - b.radius : kNone;
    }
    const double det = 1.0 - c * c;
    double s = std::clamp((c * e - d) / det, 0.0, a.length);
    const double t = std::clamp(s * c + e, 0.0, b.length);
    s = std::clamp(t * c - d, 0.0, a.length);
    return distance(a.origin + a.axis * s, b.origin + b.axis * t) - a.radius - b.radius;
}

Box boxOf(const Bar& bar) {
    Box box;
    const Vector r{bar.radius, bar.radius, bar.radius};
    for (const Vector& end : {bar.origin, bar.origin + bar.axis * bar.length}) {
        add(box, end - r);
        add(box, end + r);
    }
    return box;
}

double apart(const Box& a, const Box& b) {
    const auto gap = [](double lowA, double highA, double lowB, double highB) {
        return std::max({0.0, lowA - highB, lowB - highA});
    };
    return length({gap(a.least.x, a.greatest.x, b.least.x, b.greatest.x),
                   gap(a.least.y, a.greatest.y, b.least.y, b.greatest.y),
                   gap(a.least.z, a.greatest.z, b.least.z, b.greatest.z)});
}

void measureBetween(const Topology& topology, std::vector<Hole>& holes) {
    std::vector<Wall> walls;
    std::vector<Box> boxes;
    for (const Hole& hole : holes)
        for (const Wall& wall : wallsOf(hole)) {
            walls.push_back(wall);
            boxes.push_back(boxOf(wall.bar));
        }
    const BoxTree tree(std::move(boxes));
    for (Hole& hole : holes) {
        const std::vector<int> joined = around(topology, hole);
        for (const Wall& wall : wallsOf(hole)) {
            const Box box = boxOf(wall.bar);
            tree.search(
                hole.holeDistance,
                [&](const Vector& middle, const Vector& half) {
                    return apart(box, {middle - half, middle + half});
                },
                [&](std::uint32_t index) {
                    const Hole& other = holes[static_cast<std::size_t>(walls[index].hole - 1)];
                    if (other.number == hole.number || other.solid != hole.solid) return;
                    const double found = between(topology, wall.bar, walls[index].bar);
                    const bool crosses =
                        std::any_of(other.faces.begin(), other.faces.end(), [&](int face) {
                            return std::binary_search(joined.begin(), joined.end(), face);
                        });
                    if (found < 0.0 || crosses || found >= hole.holeDistance) return;
                    hole.holeDistance = found;
                    hole.nearestHole = other.number;
                });
        }
    }
}

}  // namespace

void measureHoles(const Topology& topology, const Surroundings& around, std::vector<Hole>& holes) {
    const Sides sides(topology);
    Numbers inHoles;
    for (const Hole& hole : holes)
        inHoles.insert(hole.faces.begin(), hole.faces.end());
    for (Hole& hole : holes) {
        hole.edgeDistance = edgeDistance(topology, sides, inHoles, hole);
        // Where a wall is touched, rounding may take the distance below 0.
        hole.wallDistance = std::max(0.0, wallDistance(topology, around, hole));
    }
    measureBetween(topology, holes);
}

}  // namespace corvane::part::features
