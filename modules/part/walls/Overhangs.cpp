#include <map>

#include "../reading/MeshTopology.h"
#include "Draft.h"
#include "Facing.h"

namespace corvane::part::walls {
namespace {

constexpr std::size_t kMost = 2000;  // samples and borders that are compared

struct Point2 {
    double x, y;
};
struct Border {
    Point2 a, b;
};

Point2 operator-(const Point2& a, const Point2& b) {
    return {a.x - b.x, a.y - b.y};
}
double dot(const Point2& a, const Point2& b) {
    return a.x * b.x + a.y * b.y;
}
double cross(const Point2& a, const Point2& b) {
    return a.x * b.y - a.y * b.x;
}

Point2 nearestOn(const Border& border, const Point2& p) {
    const Point2 along = border.b - border.a;
    const double size = dot(along, along);
    const double t = size > 0.0 ? std::clamp(dot(p - border.a, along) / size, 0.0, 1.0) : 0.0;
    return {border.a.x + along.x * t, border.a.y + along.y * t};
}

/// How far along the unit vector `way` from `p` the border is crossed, or -1.
double crossing(const Border& border, const Point2& p, const Point2& way) {
    const Point2 along = border.b - border.a, from = border.a - p;
    const double turn = cross(way, along);
    if (std::abs(turn) < 1e-12) return -1.0;
    const double at = cross(from, way) / turn;
    return at < -1e-9 || at > 1.0 + 1e-9 ? -1.0 : cross(from, along) / turn;
}

/// What hangs together, with the borders that hold it.
struct Group {
    std::vector<int> faces;
    std::vector<Sample> samples;
    std::vector<Border> held;
};

class OverhangFinder {
public:
    OverhangFinder(const Skin& skin, const Vector& up, double limit)
        : skin_(skin),
          up_(up),
          x_(squareTo(up)),
          y_(part::cross(up, x_)),
          facing_(skin, up, limit) {}

    std::vector<Overhang> find() {
        groupFaces();
        std::vector<Overhang> found;
        for (auto& [number, group] : groups_) {
            Overhang overhang = describe(group);
            measure(group, overhang);
            found.push_back(std::move(overhang));
        }
        std::stable_sort(found.begin(), found.end(),
                         [](const Overhang& l, const Overhang& r) { return l.area > r.area; });
        return found;
    }

private:
    [[nodiscard]] Point2 flat(const Vector& p) const {
        return {part::dot(p, x_), part::dot(p, y_)};
    }

    void groupFaces() {
        const Model& model = skin_.model();
        reading::Groups joined(model.faces.size() + 1);
        for (const Edge& edge : model.edges) {
            const auto a = static_cast<std::uint32_t>(edge.faces[0]),
                       b = static_cast<std::uint32_t>(edge.faces[1]);
            if (facing_.hangs(edge.faces[0]) && facing_.hangs(edge.faces[1])) joined.join(a, b);
        }
        groupOf_.resize(model.faces.size() + 1);
        for (std::uint32_t face = 0; face < groupOf_.size(); ++face)
            groupOf_[face] = joined.find(face);
        Samples(skin_, Samples::Vertices::All).each([&](const Sample& sample) {
            if (facing_.overhangs(sample.triangle))
                groups_[group(sample.triangle)].samples.push_back(sample);
        });
        facing_.eachHeldBorder([&](std::uint32_t triangle, const Vector& a, const Vector& b) {
            groups_[group(triangle)].held.push_back({flat(a), flat(b)});
        });
        for (std::uint32_t face = 1; face < groupOf_.size(); ++face) {
            const auto group = groups_.find(groupOf_[face]);
            if (group != groups_.end() && facing_.hangs(static_cast<int>(face)))
                group->second.faces.push_back(static_cast<int>(face));
        }
    }
    [[nodiscard]] std::uint32_t group(std::uint32_t triangle) const {
        return groupOf_[static_cast<std::size_t>(skin_.mesh().faces[triangle])];
    }

    [[nodiscard]] Overhang describe(const Group& group) const {
        Overhang overhang;
        overhang.angle = 90.0;
        overhang.faces = group.faces;
        for (const int face : group.faces) {
            const auto& part = facing_.of(face);
            overhang.area += part.area;
            overhang.angle = std::min(overhang.angle, part.flattest);
        }
        return overhang;
    }

    /// The span from the border that holds the farthest place to the one across, if there is one.
    void measure(const Group& group, Overhang& overhang) const {
        const std::size_t step = group.samples.size() / kMost + 1,
                          borderStep = group.held.size() / kMost + 1;
        Point2 from{}, to{};
        double most = -1.0;
        for (std::size_t i = 0; i < group.samples.size(); i += step) {
            const Point2 p = flat(group.samples[i].point);
            Point2 nearest{};
            double least = 1e300;
            for (std::size_t k = 0; k < group.held.size(); k += borderStep) {
                const Point2 on = nearestOn(group.held[k], p);
                const double away = std::sqrt(dot(p - on, p - on));
                if (away >= least) continue;
                least = away;
                nearest = on;
            }
            if (least <= most) continue;
            most = least;
            from = nearest;
            to = p;
            overhang.point = group.samples[i].point;
        }
        if (group.held.empty()) {
            overhang.kind = OverhangKind::Island;
            overhang.span = extent(group);
            return;
        }
        overhang.span = std::max(most, 0.0);
        if (most <= 0.0) return;
        double across = 1e300;
        const Point2 way{(to.x - from.x) / most, (to.y - from.y) / most};
        for (const Border& border : group.held) {
            const double t = crossing(border, to, way);
            if (t >= 0.0) across = std::min(across, t);
        }
        if (across > 1e299) return;
        overhang.kind = OverhangKind::Bridge;
        overhang.span = most + across;
    }

    [[nodiscard]] double extent(const Group& group) const {
        constexpr int kTurns = 36;
        double most = 0.0;
        for (int i = 0; i < kTurns; ++i) {
            const double turn = kPi * i / kTurns;
            double low = 1e300, high = -1e300;
            for (const Sample& sample : group.samples) {
                const double at = dot(flat(sample.point), {std::cos(turn), std::sin(turn)});
                low = std::min(low, at);
                high = std::max(high, at);
            }
            most = std::max(most, high - low);
        }
        return most;
    }

    const Skin& skin_;
    Vector up_, x_, y_;
    Facing facing_;
    std::vector<std::uint32_t> groupOf_;
    std::map<std::uint32_t, Group> groups_;
};

}  // namespace

std::vector<Overhang> findOverhangs(const Skin& skin, const Vector& up, double limitAngle) {
    if (!skin.anyClosed() || !(limitAngle > 0.0 && limitAngle <= 90.0)) return {};
    return OverhangFinder(skin, up, limitAngle).find();
}

}  // namespace corvane::part::walls
