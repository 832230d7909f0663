#include "Pockets.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "../Vec.h"

namespace corvane::part::features {
namespace {

constexpr double kSteepest = 30.0;  // degrees by which a wall may lean out

class Finder {
public:
    Finder(const Topology& topology, const std::vector<Hole>& holes)
        : topology_(topology), model_(topology.model()), fillets_(findFillets(topology)) {
        inHole_.assign(model_.faces.size() + 1, 0);
        for (const Hole& hole : holes)
            for (const int face : hole.faces)
                inHole_[static_cast<std::size_t>(face)] = hole.number;
    }

    Corners find() {
        Corners found;
        // First those without a floor: each of their walls would look like one.
        findThrough(found.pockets);
        findFloored();
        choose(found.pockets);
        std::stable_sort(
            found.pockets.begin(), found.pockets.end(),
            [](const Pocket& l, const Pocket& r) { return l.faces.front() < r.faces.front(); });
        for (std::size_t i = 0; i < found.pockets.size(); ++i)
            found.pockets[i].number = static_cast<int>(i) + 1;
        found.sharp = sharpCorners();
        found.fillets = std::move(fillets_.all);
        return found;
    }

private:
    [[nodiscard]] int holeOf(int face) const { return inHole_[static_cast<std::size_t>(face)]; }

    void keep(Pocket pocket, const PocketBody& body, std::vector<Pocket>& pockets) {
        if (body.floor > 0) taken_.emplace(body.floor, body.up);
        for (const int wall : body.walls) {
            taken_.emplace(wall, body.up);
            for (const int number : topology_.edgesOf(wall))
                if (std::binary_search(body.walls.begin(), body.walls.end(),
                                       topology_.across(number, wall)))
                    wallEdges_.insert(number);
        }
        pockets.push_back(std::move(pocket));
    }

    [[nodiscard]] bool isWallOf(int face, const Vector& up) const {
        const Face& wall = model_.face(face);
        if (!topology_.sound(face) || holeOf(face) > 0) return false;
        switch (wall.surface.kind) {
            case SurfaceKind::Cylinder:
                return topology_.parallel(wall.surface.axis, up);
            case SurfaceKind::Cone:
                return topology_.parallel(wall.surface.axis, up) &&
                       wall.surface.halfAngle <= kSteepest;
            default:
                break;
        }
        const double angle = angleBetween(wall.normal, up);
        return angle <= 90.0 + topology_.slack() && angle >= 90.0 - kSteepest;
    }

    /// What is on one flat floor.
    [[nodiscard]] std::optional<PocketBody> bodyOn(const Face& floor) {
        PocketBody body;
        body.floor = floor.number;
        body.up = floor.normal;
        body.floors = {floor.number};
        std::set<int> walls, roundings;
        for (std::size_t i = 0; i < floor.loops.size(); ++i)
            for (const int number : floor.loops[i]) {
                const Edge& edge = model_.edge(number);
                const int other = topology_.across(number, floor.number);
                if (other == 0) return std::nullopt;
                if (edge.convexity == Convexity::Concave && isWallOf(other, body.up)) {
                    walls.insert(other);
                    body.squareFloor = true;
                } else if (edge.convexity == Convexity::Smooth && fillets_.radius(other) > 0.0 &&
                           fillets_.concave(other) && topology_.sound(other)) {
                    roundings.insert(other);
                } else if (i == 0 && holeOf(other) == 0) {
                    body.open = true;
                }
            }
        addBeyond(roundings, body.up, walls);
        if (walls.empty()) return std::nullopt;
        body.walls.assign(walls.begin(), walls.end());
        body.roundings.assign(roundings.begin(), roundings.end());
        return body;
    }

    /// The walls above the roundings, and the roundings that go on around corners.
    void addBeyond(std::set<int>& roundings, const Vector& up, std::set<int>& walls) const {
        std::vector<int> open(roundings.begin(), roundings.end());
        while (!open.empty()) {
            const int rounding = open.back();
            open.pop_back();
            for (const int number : topology_.edgesOf(rounding)) {
                const int other = topology_.across(number, rounding);
                if (other == 0 || model_.edge(number).convexity != Convexity::Smooth) continue;
                const SurfaceKind kind = model_.face(other).surface.kind;
                const bool corner = fillets_.radius(other) > 0.0 && fillets_.concave(other) &&
                                    (kind == SurfaceKind::Torus || kind == SurfaceKind::Sphere ||
                                     kind == SurfaceKind::Other);
                if (corner) {
                    if (roundings.insert(other).second) open.push_back(other);
                } else if (isWallOf(other, up)) {
                    walls.insert(other);
                }
            }
        }
    }

    void findFloored() {
        for (const Face& face : model_.faces) {
            if (face.surface.kind != SurfaceKind::Plane || !topology_.sound(face.number) ||
                holeOf(face.number) > 0 || face.loops.empty())
                continue;
            if (std::optional<PocketBody> body = bodyOn(face)) bodies_.push_back(std::move(*body));
        }
    }

    /// A wall of a pocket looks like a floor with walls too: the floor with all its sides, then
    /// with more walls, then the larger one counts, and those that share walls with it only if they
    /// look the same way.
    void choose(std::vector<Pocket>& pockets) {
        std::stable_sort(
            bodies_.begin(), bodies_.end(), [&](const PocketBody& l, const PocketBody& r) {
                if (l.open != r.open) return r.open;
                if (l.walls.size() != r.walls.size()) return l.walls.size() > r.walls.size();
                const double a = model_.face(l.floor).area, b = model_.face(r.floor).area;
                if (std::abs(a - b) > 1e-6 * (a + b)) return a > b;
                return l.floor < r.floor;
            });
        for (const PocketBody& body : bodies_) {
            const auto clashes = [&](int face) {
                const auto found = taken_.find(face);
                return found != taken_.end() &&
                       !(angleBetween(found->second, body.up) <= topology_.slack());
            };
            if (clashes(body.floor) || std::any_of(body.walls.begin(), body.walls.end(), clashes))
                continue;
            if (std::optional<Pocket> pocket = measurePocket(topology_, fillets_, body))
                keep(std::move(*pocket), body, pockets);
        }
    }

    /// Pockets without a floor: an inner border of a flat face, and only walls below it.
    void findThrough(std::vector<Pocket>& pockets) {
        for (const Face& face : model_.faces) {
            if (face.surface.kind != SurfaceKind::Plane || !topology_.sound(face.number)) continue;
            for (std::size_t i = 1; i < face.loops.size(); ++i) {
                PocketBody body;
                body.up = face.normal;
                if (!wallsBelow(face, face.loops[i], body)) continue;
                if (std::optional<Pocket> pocket = measurePocket(topology_, fillets_, body)) {
                    pocket->point = middleOf(face.loops[i]);
                    keep(std::move(*pocket), body, pockets);
                }
            }
        }
    }

    bool wallsBelow(const Face& face, const std::vector<int>& loop, PocketBody& body) const {
        std::set<int> walls;
        for (const int number : loop) {
            const int other = topology_.across(number, face.number);
            if (other == 0) return false;
            int wall = other;
            // A rounded mouth: the wall is below the rounding.
            if (fillets_.radius(other) > 0.0 && !fillets_.concave(other) &&
                model_.edge(number).convexity == Convexity::Smooth)
                wall = wallBeside(other, body.up);
            else if (model_.edge(number).convexity != Convexity::Convex)
                return false;
            if (wall == 0 || !isWallOf(wall, body.up) || taken_.count(wall) > 0) return false;
            walls.insert(wall);
        }
        body.walls.assign(walls.begin(), walls.end());
        return walls.size() > 1 && !hasFloor(walls);
    }
    /// Whether something goes on inside from a wall.
    [[nodiscard]] bool hasFloor(const std::set<int>& walls) const {
        for (const int wall : walls)
            for (const int number : topology_.edgesOf(wall)) {
                const int other = topology_.across(number, wall);
                if (other == 0) return true;
                if (walls.count(other) > 0) continue;
                const Convexity convexity = model_.edge(number).convexity;
                if (convexity == Convexity::Concave ||
                    (convexity == Convexity::Smooth && fillets_.concave(other)))
                    return true;
            }
        return false;
    }
    [[nodiscard]] int wallBeside(int rounding, const Vector& up) const {
        for (const int number : topology_.edgesOf(rounding)) {
            const int other = topology_.across(number, rounding);
            if (other > 0 && !(fillets_.radius(other) > 0.0 && !fillets_.concave(other)) &&
                isWallOf(other, up))
                return other;
        }
        return 0;
    }

    [[nodiscard]] Vector middleOf(const std::vector<int>& loop) const {
        Vector sum;
        double weight = 0.0;
        for (const int number : loop) {
            const Edge& edge = model_.edge(number);
            for (const Vector& p : edge.points) {
                const double share = edge.length / static_cast<double>(edge.points.size());
                sum = sum + p * share;
                weight += share;
            }
        }
        return weight > 0.0 ? sum * (1.0 / weight) : sum;
    }

    [[nodiscard]] std::vector<SharpCorner> sharpCorners() const {
        std::vector<SharpCorner> corners;
        for (const Edge& edge : model_.edges) {
            const auto [a, b] = edge.faces;
            if (edge.convexity != Convexity::Concave || a == 0 || b == 0 || edge.points.empty())
                continue;
            if (holeOf(a) > 0 && holeOf(a) == holeOf(b)) continue;
            SharpCorner corner;
            corner.edge = edge.number;
            const std::size_t middle = edge.points.size() / 2;
            corner.point = edge.kind == CurveKind::Line
                               ? (edge.points.front() + edge.points.back()) * 0.5
                               : edge.points[middle];
            if (edge.kind == CurveKind::Line)
                corner.direction = unit(edge.points.back() - edge.points.front());
            corner.length = edge.length;
            corner.angle = 180.0 - edge.angle;
            corner.pocketWall = wallEdges_.count(edge.number) > 0;
            corners.push_back(corner);
        }
        return corners;
    }

    const Topology& topology_;
    const Model& model_;
    Fillets fillets_;
    std::vector<int> inHole_;  // by face, the number of its hole
    std::vector<PocketBody> bodies_;
    std::map<int, Vector> taken_;  // by face, the way out of its pocket
    std::set<int> wallEdges_;
};

}  // namespace

Corners findCorners(const Model& model, const std::vector<Hole>& holes) {
    const Topology topology(model);
    if (!topology.usable()) return {};
    return Finder(topology, holes).find();
}

}  // namespace corvane::part::features
