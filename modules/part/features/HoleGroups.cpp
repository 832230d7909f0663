#include "HoleGroups.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "../Vec.h"
#include "../reading/MeshTopology.h"
#include "Holes.h"

namespace corvane::part::features {
namespace {

class Grouper {
public:
    Grouper(const Topology& topology, const Axes& axes)
        : topology_(topology),
          model_(topology.model()),
          axes_(axes),
          groups_(model_.faces.size()) {}

    std::vector<HoleGroup> group() {
        for (const Edge& edge : model_.edges)
            joinAcross(edge);
        std::vector<bool> seen(model_.faces.size() + 1, false);
        for (const Face& face : model_.faces)
            if (face.surface.kind == SurfaceKind::Plane && topology_.sound(face.number) &&
                !seen[static_cast<std::size_t>(face.number)])
                joinOverStep(planeAround(face.number, seen));
        joinPieces();
        return collect();
    }

private:
    [[nodiscard]] bool isWall(int face) const { return face > 0 && isHoleWall(topology_, face); }
    /// What may follow a wall around the same axis: a round bottom or a rounded corner or mouth.
    [[nodiscard]] bool isEnd(int number) const {
        if (number == 0 || !topology_.sound(number)) return false;
        const Face& face = model_.face(number);
        return (face.surface.kind == SurfaceKind::Sphere && face.concave) ||
               face.surface.kind == SurfaceKind::Torus;
    }
    void join(int a, int b) {
        groups_.join(static_cast<std::uint32_t>(a - 1), static_cast<std::uint32_t>(b - 1));
    }
    std::uint32_t groupOf(int face) { return groups_.find(static_cast<std::uint32_t>(face - 1)); }
    [[nodiscard]] bool coaxial(int wall, int other) const {
        const Surface& s = model_.face(wall).surface;
        return topology_.onAxis(model_.face(other).surface, s.origin, s.axis);
    }

    void joinAcross(const Edge& edge) {
        const auto [a, b] = edge.faces;
        if (a == b || a == 0 || b == 0) return;
        const bool wallA = isWall(a), wallB = isWall(b);
        if (!(wallA && (wallB || isEnd(b))) && !(wallB && isEnd(a))) return;
        if (coaxial(wallA ? a : b, wallA ? b : a)) join(a, b);
    }

    /// The faces of one plane that lie edge to edge.
    [[nodiscard]] std::vector<int> planeAround(int first, std::vector<bool>& seen) const {
        std::vector<int> planes{first};
        seen[static_cast<std::size_t>(first)] = true;
        for (std::size_t i = 0; i < planes.size(); ++i)
            for (const int edge : topology_.edgesOf(planes[i])) {
                const int other = topology_.across(edge, planes[i]);
                if (other == 0 || seen[static_cast<std::size_t>(other)] ||
                    model_.edge(edge).convexity != Convexity::Smooth ||
                    model_.face(other).surface.kind != SurfaceKind::Plane)
                    continue;
                seen[static_cast<std::size_t>(other)] = true;
                planes.push_back(other);
            }
        return planes;
    }

    /// A flat ring around the axis, with a wall up from its outer border and one down from its
    /// inner border.
    void joinOverStep(const std::vector<int>& planes) {
        std::vector<std::pair<int, int>> up, down;  // a wall, the plane beside it
        bool otherWalls = false;
        for (const int plane : planes) {
            for (const int number : topology_.edgesOf(plane)) {
                const Edge& edge = model_.edge(number);
                const int other = topology_.across(number, plane);
                if (other == 0) continue;
                const bool round =
                    (isWall(other) || isEnd(other)) &&
                    topology_.parallel(model_.face(other).surface.axis, model_.face(plane).normal);
                const bool rises =
                    edge.convexity == Convexity::Concave ||
                    (edge.convexity == Convexity::Smooth && model_.face(other).concave);
                if (round)
                    (rises ? up : down).emplace_back(other, plane);
                else if (rises)
                    otherWalls = true;
            }
        }
        joinOverStep(up, down, otherWalls);
    }
    void joinOverStep(const std::vector<std::pair<int, int>>& up,
                      const std::vector<std::pair<int, int>>& down, bool otherWalls) {
        for (const auto& [outer, plane] : up) {
            const Surface& s = model_.face(outer).surface;
            // A slot's rounded end does not become the counterbore of a hole in its floor.
            if (otherWalls && topology_.turnOf({outer}, s.origin, s.axis) < kLeastTurn) continue;
            for (const auto& [inner, innerPlane] : down) {
                if (axes_.of(outer) < 0 || axes_.of(outer) != axes_.of(inner)) continue;
                join(outer, inner);
                steps_.emplace_back(outer, plane);
                steps_.emplace_back(outer, innerPlane);
            }
        }
    }

    struct Piece {
        int axis, face;
        double radius;
        Range range;
    };

    /// Joins cylinders of one axis and radius that lie side by side, or one after the other with a
    /// cross bore between them.
    void joinPieces() {
        std::map<std::pair<int, int>, std::vector<Piece>> lines;  // by solid and axis
        std::map<int, Vector> directions;
        for (const Face& face : model_.faces) {
            if (face.surface.kind != SurfaceKind::Cylinder || !isWall(face.number)) continue;
            const int axis = axes_.of(face.number);
            const Vector& along = directions.emplace(axis, face.surface.axis).first->second;
            lines[{face.solid, axis}].push_back(
                {axis, face.number, face.surface.radius, topology_.rangeOf(face.number, along)});
        }
        for (auto& [line, pieces] : lines) {
            std::sort(pieces.begin(), pieces.end(), [](const Piece& l, const Piece& r) {
                return std::tie(l.radius, l.range.low, l.face) <
                       std::tie(r.radius, r.range.low, r.face);
            });
            for (std::size_t i = 0; i < pieces.size();) {
                std::size_t end = i + 1;
                while (end < pieces.size() &&
                       pieces[end].radius - pieces[end - 1].radius <= topology_.near())
                    ++end;
                std::sort(pieces.begin() + static_cast<std::ptrdiff_t>(i),
                          pieces.begin() + static_cast<std::ptrdiff_t>(end),
                          [](const Piece& l, const Piece& r) {
                              return std::tie(l.range.low, l.face) < std::tie(r.range.low, r.face);
                          });
                joinAlong({pieces.begin() + static_cast<std::ptrdiff_t>(i),
                           pieces.begin() + static_cast<std::ptrdiff_t>(end)});
                i = end;
            }
        }
    }

    void joinAlong(const std::vector<Piece>& pieces) {
        std::vector<int> before{pieces[0].face};
        Range reach = pieces[0].range;
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            const Piece& next = pieces[i];
            const double gap = next.range.low - reach.high;
            const bool together =
                gap <= topology_.near() ||
                (gap <= reach.length() + next.range.length() && shareCrossBore(before, next.face));
            if (together) {
                join(before.front(), next.face);
                before.push_back(next.face);
                reach.add(next.range);
            } else {
                before = {next.face};
                reach = next.range;
            }
        }
    }

    [[nodiscard]] std::vector<std::pair<int, double>> boresAcross(int face) const {
        std::vector<std::pair<int, double>> bores;
        for (const int edge : topology_.edgesOf(face)) {
            const int other = topology_.across(edge, face);
            if (isWall(other) && axes_.of(other) != axes_.of(face))
                bores.emplace_back(axes_.of(other), model_.face(other).surface.radius);
        }
        return bores;
    }
    [[nodiscard]] bool shareCrossBore(const std::vector<int>& faces, int next) const {
        const auto crossing = boresAcross(next);
        if (crossing.empty()) return false;
        for (const int face : faces)
            for (const auto& [axis, radius] : boresAcross(face))
                for (const auto& [otherAxis, otherRadius] : crossing)
                    if (axis == otherAxis && std::abs(radius - otherRadius) <= topology_.near())
                        return true;
        return false;
    }

    std::vector<HoleGroup> collect() {
        std::map<std::uint32_t, HoleGroup> found;  // a group is numbered by its first face
        for (const Face& face : model_.faces)
            if (isWall(face.number)) found[groupOf(face.number)].round.push_back(face.number);
        for (const Face& face : model_.faces) {
            if (isWall(face.number) || !isEnd(face.number)) continue;
            const auto group = found.find(groupOf(face.number));
            if (group != found.end()) group->second.round.push_back(face.number);
        }
        for (const auto& [wall, plane] : steps_) {
            const auto group = found.find(groupOf(wall));
            if (group != found.end()) group->second.steps.push_back(plane);
        }
        std::vector<HoleGroup> groups;
        for (auto& [root, group] : found) {
            std::sort(group.round.begin(), group.round.end());
            std::sort(group.steps.begin(), group.steps.end());
            group.steps.erase(std::unique(group.steps.begin(), group.steps.end()),
                              group.steps.end());
            groups.push_back(std::move(group));
        }
        return groups;
    }

    const Topology& topology_;
    const Model& model_;
    const Axes& axes_;
    reading::Groups groups_;
    std::vector<std::pair<int, int>> steps_;  // a wall, the flat ring beside it
};

}  // namespace

bool isHoleWall(const Topology& topology, int number) {
    const Face& face = topology.model().face(number);
    const SurfaceKind kind = face.surface.kind;
    return topology.sound(number) && face.concave &&
           (kind == SurfaceKind::Cylinder || kind == SurfaceKind::Cone);
}

std::vector<HoleGroup> groupRoundFaces(const Topology& topology, const Axes& axes) {
    return Grouper(topology, axes).group();
}

}  // namespace corvane::part::features
