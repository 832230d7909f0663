#include "HoleEnds.h"

#include <cmath>
#include <map>

#include "../Elementary.h"
#include "../Vec.h"

namespace corvane::part::features {
namespace {

/// The part of a square mouth's border that must be there; a mesh's circle is a little short.
constexpr double kWholeBorder = 0.97;

class EndFinder {
public:
    EndFinder(const Topology& topology, const HoleBody& body, double side)
        : topology_(topology), model_(topology.model()), body_(body), out_(body.axis * side) {
        end_.place = side < 0.0 ? body.whole.low : body.whole.high;
        for (const HolePiece& piece : body.pieces) {
            const double reach = side < 0.0 ? piece.range.low : piece.range.high;
            if (std::abs(reach - end_.place) > topology.near()) continue;
            const double radius = piece.radiusAt(end_.place);
            if (end_.piece != nullptr && radius <= end_.radius) continue;
            end_.piece = &piece;
            end_.radius = radius;
        }
    }

    HoleEnd find(const Surroundings& around) {
        for (const int face : body_.faces)
            for (const int edge : topology_.edgesOf(face))
                look(model_.edge(edge), topology_.across(edge, face));
        end_.open = openLength_ > closedLength_;
        if (!end_.open) {
            for (const int floor : end_.floors)
                end_.core = end_.core || holdsCore(floor);
            for (const int face : end_.piece->faces)
                end_.core = end_.core || holdsCore(face);
            return end_;
        }
        double longest = 0.0;
        for (const auto& [face, length] : borders_) {
            if (length <= longest) continue;
            longest = length;
            end_.face = face;
        }
        describeMouth(around);
        return end_;
    }

private:
    void look(const Edge& edge, int other) {
        if (std::binary_search(body_.faces.begin(), body_.faces.end(), other)) return;
        const Range range = rangeAlong(model_, edge, out_);
        const double place = dot(out_, body_.axis) < 0.0 ? -end_.place : end_.place;
        if (range.high < place - topology_.near()) return;
        if (other == 0) {
            openLength_ += edge.length;
            return;
        }
        const Face& face = model_.face(other);
        const bool across =
            face.surface.kind == SurfaceKind::Plane && topology_.parallel(face.surface.axis, out_);
        const bool closes =
            across ? dot(face.surface.axis, out_) < 0.0 : edge.convexity == Convexity::Concave;
        if (closes) {
            closedLength_ += edge.length;
            end_.flat = end_.flat || across;
            end_.floors.push_back(other);
            return;
        }
        openLength_ += edge.length;
        borders_[other] += edge.length;
        if (across && range.length() <= topology_.near()) squareLength_ += edge.length;
    }

    /// Whether so thick a pin stands on the face, around the hole's axis, that a groove is left.
    [[nodiscard]] bool holdsCore(int number) const {
        for (const int edge : topology_.edgesOf(number)) {
            const int other = topology_.across(edge, number);
            if (other == 0 || !topology_.sound(other)) continue;
            const Face& face = model_.face(other);
            const bool pin = (face.surface.kind == SurfaceKind::Cylinder ||
                              face.surface.kind == SurfaceKind::Cone) &&
                             !face.concave && model_.edge(edge).convexity != Convexity::Convex;
            if (pin && face.surface.radius > end_.radius / 2 &&
                topology_.onAxis(face.surface, body_.origin, body_.axis))
                return true;
        }
        return false;
    }

    void describeMouth(const Surroundings& around) {
        const double turn = topology_.turnOf(end_.piece->faces, body_.origin, body_.axis);
        end_.square = squareLength_ >= kWholeBorder * radians(turn) * end_.radius;
        const Vector centre =
            body_.origin + body_.axis * (end_.place - dot(body_.origin, body_.axis));
        if (end_.face > 0) {
            const Face& face = model_.face(end_.face);
            const Vector normal = offsetFrom(face.surface, centre).outward;
            end_.area = face.area;
            const bool inward = face.concave && face.surface.kind != SurfaceKind::Plane;
            if (dot(normal, normal) > 0.5)
                end_.angle = angleBetween(inward ? -normal : normal, out_);
        }
        end_.free = around.free({centre, out_, 0.0, end_.radius}, false, body_.faces, body_.solid);
    }

    const Topology& topology_;
    const Model& model_;
    const HoleBody& body_;
    Vector out_;
    HoleEnd end_;
    std::map<int, double> borders_;  // by face, the length of the outermost border
    double openLength_ = 0.0, closedLength_ = 0.0, squareLength_ = 0.0;
};

}  // namespace

HoleEnd endOf(const Topology& topology, const Surroundings& around, const HoleBody& body,
              double side) {
    return EndFinder(topology, body, side).find(around);
}

}  // namespace corvane::part::features
