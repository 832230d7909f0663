#include <map>

#include "../reading/MeshTopology.h"
#include "Draft.h"
#include "Reach.h"

namespace corvane::part::walls {
namespace {

constexpr std::size_t kMostDirections = 48;
constexpr std::size_t kMostSamples = 400;  // of one undercut, that a slide must free
constexpr double kSameLine = 0.1;          // degrees

/// Directions in which a slide may leave an undercut, those square to the pull first.
class Slides {
public:
    Slides(const Model& model, const std::vector<int>& faces, const Vector& pull) : pull_(pull) {
        std::vector<Vector> lines;
        for (const int number : faces) {
            const Face& face = model.face(number);
            if (face.surface.kind == SurfaceKind::Other)
                add(lines, face.normal);
            else
                add(lines, face.surface.axis);
        }
        for (const Vector& line : lines)
            offer(line);
        for (std::size_t i = 0; i < lines.size(); ++i)
            for (std::size_t k = 0; k < i; ++k)
                offer(unit(cross(lines[i], lines[k])));
        for (const Vector& line : lines)
            offer(unit(cross(line, pull)));
        for (const Vector& line : lines)
            offer(unit(line - pull * dot(line, pull)));
        std::stable_partition(directions_.begin(), directions_.end(),
                              [&](const Vector& d) { return std::abs(dot(d, pull_)) < 1e-6; });
    }

    [[nodiscard]] const std::vector<Vector>& directions() const { return directions_; }

private:
    static void add(std::vector<Vector>& to, const Vector& line) {
        if (to.size() >= kMostDirections / 4 || !(dot(line, line) > 0.5)) return;
        for (const Vector& known : to)
            if (angleBetweenLines(known, line) < kSameLine) return;
        to.push_back(line);
    }
    void offer(const Vector& line) {
        // Along the pull there is a half of the mould, and the undercut is hidden from it.
        if (directions_.size() >= kMostDirections || !(dot(line, line) > 0.5)) return;
        if (angleBetweenLines(line, pull_) < kSameLine) return;
        for (const Vector& known : directions_)
            if (angleBetweenLines(known, line) < kSameLine) return;
        directions_.push_back(line);
        directions_.push_back(Vector{} - line);
    }

    Vector pull_;
    std::vector<Vector> directions_;
};

/// Chooses the direction that frees all places with the least travel.
void findSlide(const Reach& reach, const std::vector<Vector>& directions,
               const std::vector<const Sample*>& samples, Undercut& undercut) {
    const std::size_t step = samples.size() / kMostSamples + 1;
    for (const Vector& direction : directions) {
        double low = 1e300, high = -1e300;
        bool free = true;
        for (std::size_t i = 0; i < samples.size() && free; i += step)
            free = reach.isFree(*samples[i], direction);
        if (!free) continue;
        for (const Sample* sample : samples) {
            low = std::min(low, dot(sample->point, direction));
            high = std::max(high, dot(sample->point, direction));
        }
        const bool none = dot(undercut.slide, undercut.slide) == 0.0;
        if (!none && high - low >= undercut.travel * (1.0 - 1e-6)) continue;
        undercut.slide = direction;
        undercut.travel = high - low;
    }
}

/// The place nearest to the middle of all.
Vector middleOf(const std::vector<const Sample*>& samples) {
    Vector sum, best;
    double area = 0.0, least = 1e300;
    for (const Sample* sample : samples) {
        sum = sum + sample->point * sample->area;
        area += sample->area;
    }
    const Vector middle = area > 0.0 ? sum * (1.0 / area) : sum;
    for (const Sample* sample : samples) {
        const double away = distance(sample->point, middle);
        if (away >= least) continue;
        least = away;
        best = sample->point;
    }
    return best;
}

struct Group {
    Undercut undercut;  // its faces and their hidden area
    std::vector<const Sample*> samples;
};

/// The faces that are undercuts, those that hang together in a group, with what was seen of them.
std::vector<Group> groupsOf(const Skin& skin, const Hidden& hidden) {
    const Model& model = skin.model();
    std::vector<bool> isIn(model.faces.size() + 1, false);
    for (const Face& face : model.faces)
        isIn[static_cast<std::size_t>(face.number)] = hidden.isUndercut(face, skin.size());
    reading::Groups joined(isIn.size());
    for (const Edge& edge : model.edges) {
        const auto a = static_cast<std::uint32_t>(edge.faces[0]),
                   b = static_cast<std::uint32_t>(edge.faces[1]);
        if (isIn[a] && isIn[b]) joined.join(a, b);
    }
    std::map<std::uint32_t, Group> groups;
    for (const Sample& sample : hidden.samples) {
        const auto face = static_cast<std::uint32_t>(skin.mesh().faces[sample.triangle]);
        if (isIn[face]) groups[joined.find(face)].samples.push_back(&sample);
    }
    for (std::uint32_t face = 1; face < isIn.size(); ++face) {
        if (!isIn[face]) continue;
        Undercut& undercut = groups[joined.find(face)].undercut;
        undercut.faces.push_back(static_cast<int>(face));
        undercut.area += hidden.areas[face];
    }
    std::vector<Group> all;
    all.reserve(groups.size());
    for (auto& [number, group] : groups)
        all.push_back(std::move(group));
    return all;
}

}  // namespace

std::vector<Undercut> findUndercuts(const Skin& skin, const Hidden& hidden, const Vector& pull) {
    std::vector<Group> groups = groupsOf(skin, hidden);
    std::stable_sort(groups.begin(), groups.end(), [](const Group& l, const Group& r) {
        return l.undercut.area > r.undercut.area;
    });
    const Reach reach(skin);
    std::vector<Undercut> undercuts;
    for (Group& group : groups) {
        Undercut& undercut = undercuts.emplace_back(std::move(group.undercut));
        undercut.point = middleOf(group.samples);
        if (reach.isTired()) continue;
        findSlide(reach, Slides(skin.model(), undercut.faces, pull).directions(), group.samples,
                  undercut);
    }
    return undercuts;
}

}  // namespace corvane::part::walls
